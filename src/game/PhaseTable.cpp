#include "game/PhaseTable.h"

#include <array>

namespace vk {

namespace {

struct Transition {
    PhaseEvent Event;
    int From;
    int To;
};

constexpr std::array kTransitions{
    Transition{PhaseEvent::Gooi, 0, 4},           Transition{PhaseEvent::Gooi, 3, 4},
    Transition{PhaseEvent::EindeBeurt, 0, 39},    Transition{PhaseEvent::EindeBeurt, 3, 27},
    Transition{PhaseEvent::EindeBeurt, 4, 27},    Transition{PhaseEvent::EindeBeurt, 9, 27},
    Transition{PhaseEvent::EindeBeurt, 18, 27},   Transition{PhaseEvent::HandCard, 0, 1},
    Transition{PhaseEvent::HandCard, 32, 31},     Transition{PhaseEvent::HandCard, 38, 37},
    Transition{PhaseEvent::NewCard, 32, 31},      Transition{PhaseEvent::NewCard, 38, 37},
    Transition{PhaseEvent::KompasGebruik, 1, 2},  Transition{PhaseEvent::KompasGebruik, 31, 33},
    Transition{PhaseEvent::KompasGebruik, 37, 39}, Transition{PhaseEvent::KompasSluit, 1, 0},
    Transition{PhaseEvent::KompasSluit, 31, 32},  Transition{PhaseEvent::KompasSluit, 37, 38},
    Transition{PhaseEvent::Dice1, 4, 5},          Transition{PhaseEvent::Dice1, 5, 4},
    Transition{PhaseEvent::Dice1, 18, 19},        Transition{PhaseEvent::Dice1, 19, 18},
    Transition{PhaseEvent::Dice2, 4, 14},         Transition{PhaseEvent::Dice2, 14, 4},
    Transition{PhaseEvent::Dice2, 9, 10},         Transition{PhaseEvent::Dice2, 10, 9},
    Transition{PhaseEvent::BothDice, 4, 23},      Transition{PhaseEvent::BothDice, 23, 4},
};

const std::string kCamp = ". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door daarop te "
                          "dubbelklikken. u kan een voertuig kiezen die zich in uw kamp bevindt en naar het HQ "
                          "verplaatsen maar niet verder.";
const std::string kNoCamp = ". duid een eigen voertuig aan om te verplaatsen, of om mee te schieten, door daarop te "
                            "dubbelklikken. u kan geen voertuig kiezen die zich in uw kamp bevindt (geen 6, of volzet "
                            "HQ, of geen kompagnieen).";
const std::string kNoFuel = "Uw voertuigen hebben nog steeds geen brandstof, u kan zich dus niet verplaatsen. u kan "
                            "echter wel schieten op een vijandig voertuig.";
const std::string kPickDestination =
    " Dubbelklik dan op het voertuig dat u wenst te verplaatsen, of waarmee u wilt schieten, om vervolgens de "
    "bestemming met een dubbelklik aan te klikken. De bestemming is een vakje op het spelbord, leeg, of met een mijn "
    "om op te pikken, of een vijandelijk voertuig waarop je schiet. Je kan je beurt vroegtijdig beeindigen door op de "
    "knop 'einde beurt' te klikken.";

std::string TurnStartMessage(int cardCount)
{
    if (cardCount > 0)
        return "u bent aan de beurt. je kan voor je beurt een personnel kaart uitspelen. deze kan je eerst inkijken "
               "door naast de knop 'Gooien' op het miniatuur te klikken, en dan beslissen om deze te gebruiken. "
               "Zoniet, druk op de knop 'gooien', of op 'einde beurt' om je beurt over te slaan.";
    return "u bent aan de beurt. gelieve op de knop 'gooien' te drukken, of op 'einde beurt' om je beurt over te "
           "slaan.";
}

std::string OneDieMessage(int phase, const PhaseContext& context)
{
    if (context.FuelBlocked)
        return kNoFuel;
    const bool left = phase == 5 || phase == 19;
    const std::string chosen =
        left ? "u koos voor dobbelsteen 1, deze heeft de waarde " : "u koos voor dobbelsteen 2, deze heeft de waarde ";
    return chosen + std::to_string(left ? context.Dice1 : context.Dice2) + (CampOpen(phase, context) ? kCamp : kNoCamp);
}

std::string BothDiceMessage(const PhaseContext& context)
{
    if (context.FuelBlocked)
        return kNoFuel;
    if (CampOpen(23, context))
        return "u koos voor beide dobbelstenen, de waarde 6 behoort tot de mogelijkheden. duid een eigen voertuig aan "
               "om te verplaatsen, of om mee te schieten, door daarop te dubbelklikken. u kan een voertuig kiezen die "
               "zich in uw kamp bevindt en naar het HQ verplaatsen, misschien wel verder.";
    return "u koos voor beide dobbelstenen, deze hebben de waarde " + std::to_string(context.Dice1 + context.Dice2) +
           kNoCamp;
}

} // namespace

int NextPhase(PhaseEvent event, int phase)
{
    for (const Transition& t : kTransitions)
        if (t.Event == event && t.From == phase)
            return t.To;
    return -1;
}

int PhaseDie(int phase)
{
    switch (phase) {
    case 5: case 7: case 8: case 19: case 21: case 22: return 1;
    case 10: case 12: case 13: case 14: case 16: case 17: return 2;
    case 23: case 25: case 26: return 3;
    default: return 0;
    }
}

bool IsVehiclePickPhase(int phase)
{
    return phase == 5 || phase == 10 || phase == 14 || phase == 19 || phase == 23;
}

bool IsCampVehiclePhase(int phase)
{
    return phase == 7 || phase == 12 || phase == 16 || phase == 21 || phase == 25;
}

bool IsFieldVehiclePhase(int phase)
{
    return phase == 8 || phase == 13 || phase == 17 || phase == 22 || phase == 26;
}

bool CampOpen(int phase, const PhaseContext& context)
{
    const int die = PhaseDie(phase);
    const bool six = die == 1   ? context.Dice1 == 6
                     : die == 2 ? context.Dice2 == 6
                                : context.Dice1 == 6 || context.Dice2 == 6 || context.Dice1 + context.Dice2 == 6;
    return die != 0 && six && context.HQCount < 3 && context.CampCompanies >= 1;
}

std::string PhaseMessage(int phase, const PhaseContext& context)
{
    switch (phase) {
    case 0:
        return TurnStartMessage(context.CardCount);
    case 1:
        return "klik op de knop 'gebruik' om deze personnel kaart nu uit te spelen. druk anders op de knop "
               "'sluiten'.";
    case 3:
        return "u bent nog steeds aan de beurt. gelieve op de knop 'gooi' te drukken, of op 'einde beurt' om je "
               "beurt nu te beeindigen.";
    case 4:
        return "Dubbelklik, afhankelijk van wat je wil doen, op de dobbelstenen apart (links of rechts), of beiden "
               "samen (midden)." + kPickDestination;
    case 5: case 10: case 14: case 19:
        return OneDieMessage(phase, context);
    case 23:
        return BothDiceMessage(context);
    case 7: case 12: case 16: case 21: case 25:
        return "U koos voor een voertuig in uw kamp. (enkel)klik langzaam op het voertuig om het aantal kompagnieën "
               "aan te passen. indien het een commando voertuig is wordt op dezelfde wijze ook het laden van een mijn "
               "in het voertuig verkregen. dubbelklik uiteindelijk op de bestemming van het voertuig.";
    case 8: case 13: case 17: case 22: case 26:
        return "voertuig gekozen. dubbelklik nu op de bestemming, dit is ofwel een leeg vakje op het spelbord "
               "(verplaatsen), of met een mijn (verplaatsen en mijn oppikken - enkel genie), of met een vijandelijk "
               "voertuig (schieten).";
    case 9:
        return "Dubbelklik op de rechtse dobbelsteen." + kPickDestination;
    case 18:
        return "Dubbelklik op de linkse dobbelsteen." + kPickDestination;
    default:
        return {};
    }
}

} // namespace vk

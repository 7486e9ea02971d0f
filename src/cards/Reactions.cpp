#include "cards/Reactions.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "cards/DeckMoves.h"

namespace vk {

namespace {

const char* const kJeepAttacked = "Jeep wordt aangevallen!";

CardOffer Ask(const char* text)
{
    return CardOffer{true, kJeepAttacked, text};
}

CardOffer OfferAgainstShot(const CompassDeck& deck, int side)
{
    if (!HandHolds(deck, side, kVrijgeleide))
        return {};
    return Ask("Uw jeep wordt beschoten door de vijand, u beschikt over een vrijgeleide. Wilt u die gebruiken?");
}

CardOffer OfferAgainstAmbush(const CompassDeck& deck, int side)
{
    const int count = CardCountOf(deck, side);
    if (count == 1)
        return HandSlot(deck, side, 1) == kVrijgeleide
                   ? Ask("Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide. Wilt u die "
                         "gebruiken?")
                   : CardOffer{};
    if (count != 2)
        return {};
    const int first = HandSlot(deck, side, 1);
    const int second = HandSlot(deck, side, 2);
    if ((first == kVrijgeleide && second == kContraSpionage) || (first == kContraSpionage && second == kVrijgeleide))
        return Ask("Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide, maar ook over contra "
                   "spionage. Als u liever contra spionage, of geen van beide wilt gebruiken, antwoord dan neen op "
                   "de volgende vraag: Wilt u de vrijgeleide gebruiken?");
    if (first == kVrijgeleide || second == kVrijgeleide)
        return Ask("Uw jeep kwam in een hinderlaag terecht, u beschikt over een vrijgeleide, . Wilt u die gebruiken?");
    return {};
}

CardOffer ContraAgainstAmbush(const CompassDeck& deck, int side)
{
    if (!HandHolds(deck, side, kContraSpionage))
        return {};
    return Ask("Uw jeep kwam in een hinderlaag terecht, u beschikt over Contra Spionage. Wilt u die gebruiken?");
}

// The common way a card leaves a hand: a first slot holding it takes the
// second slot's card.
void CloseUpOver(CompassDeck& deck, int side, int card)
{
    if (HandSlot(deck, side, 1) == card)
        HandSlot(deck, side, 1) = HandSlot(deck, side, 2);
}

} // namespace

CardOffer OfferAgainst(int question, const CompassDeck& deck, int side)
{
    switch (question) {
    case kAskSafeConductAgainstShot: return OfferAgainstShot(deck, side);
    case kAskSafeConductAgainstAmbush: return OfferAgainstAmbush(deck, side);
    case kAskContraAgainstAmbush: return ContraAgainstAmbush(deck, side);
    default: return {};
    }
}

void UseSafeConduct(CompassDeck& deck, int side)
{
    PushToBottom(deck, kVrijgeleide);
    int& count = CardCountOf(deck, side);
    if (count == 1) {
        count = 0;
    } else if (count == 2) {
        CloseUpOver(deck, side, kVrijgeleide);
        count = 1;
    }
}

void UseContraAgainstAmbush(CompassDeck& deck, int side)
{
    int& count = CardCountOf(deck, side);
    if (count == 1) {
        PushToBottom(deck, kContraSpionage);
        count = 0;
    } else if (count == 2) {
        PushToBottom(deck, kVrijgeleide);
        CloseUpOver(deck, side, kVrijgeleide);
        count = 1;
    }
}

bool ContraOfferedAgainstPersonnel(const CompassDeck& deck, int side)
{
    constexpr int kContraValueInMessage = 4;
    const int count = CardCountOf(deck, side);
    if (count == 1)
        return HandSlot(deck, side, 1) == kContraValueInMessage;
    if (count == 2)
        return HandSlot(deck, side, 1) == kContraValueInMessage || HandSlot(deck, side, 2) == kContraValueInMessage;
    return false;
}

void UseContraAgainstPersonnel(CompassDeck& deck, int side)
{
    PushToBottom(deck, kContraSpionage);
    CloseUpOver(deck, side, kContraSpionage);
    CardCountOf(deck, side) -= 1;
}

void MirrorCardUsedAgainstAsker(CompassDeck& deck, int side, int card)
{
    PushToBottom(deck, card);
    CloseUpOver(deck, side, card);
    CardCountOf(deck, side) -= 1;
}

void MirrorCardPlayedByAsker(CompassDeck& deck, int side, int card)
{
    PushToBottom(deck, card);
    if (CardCountOf(deck, side) == 2)
        CloseUpOver(deck, side, card);
    CardCountOf(deck, side) -= 1;
}

void MirrorContraBeatingSafeConduct(CompassDeck& deck, int side)
{
    PushToBottom(deck, kContraSpionage);
    CardCountOf(deck, side) = 0;
}

bool AsksSafeConduct(const CompassDeck& deck, int shooterSide)
{
    return CardCountOf(deck, OtherSide(shooterSide)) != 0 && !HandHolds(deck, shooterSide, kVrijgeleide);
}

ContraOffer ContraOfferAgainstSafeConduct(const CompassDeck& deck, int shooterSide)
{
    const int count = CardCountOf(deck, shooterSide);
    ContraOffer offer;
    offer.Title = "Jeep heeft vrijgeleide!";
    if (count == 0) {
        offer.What = ContraOffer::Kind::JeepGoesBack;
        offer.Text = "Uw tegenstander heeft een vrijgeleide voor zijn jeep gebruikt.";
    } else if (count == 1 && HandHolds(deck, shooterSide, kContraSpionage)) {
        offer.What = ContraOffer::Kind::Ask;
        offer.Text = "De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld mits uw contra spionage. "
                     "Wilt u die gebruiken?";
    } else if (count == 2 && HandHolds(deck, shooterSide, kContraSpionage)) {
        offer.What = ContraOffer::Kind::Ask;
        offer.Text = "De jeep beschikt over een vrijgeleide, maar dit kan worden verijdeld door uw contra spionage. "
                     "Wilt u die gebruiken?";
    }
    return offer;
}

void UseContraAgainstSafeConduct(CompassDeck& deck, int shooterSide)
{
    PushToBottom(deck, kContraSpionage);
    int& count = CardCountOf(deck, shooterSide);
    if (count == 1) {
        count = 0;
    } else {
        CloseUpOver(deck, shooterSide, kContraSpionage);
        count = 1;
    }
}

void DestroyJeepInAmbush(BoardState& state, int side)
{
    int& companies = state.VehicleCompanies(side, kJeepSlot);
    state.ReserveCompanies(side) += companies;
    companies = 0;
    state.BoardCell(state.VehiclePos(side, kJeepSlot)) = 0;
    state.VehiclePos(side, kJeepSlot) = kOutOfGame;
    Picture& picture = state.VehiclePicture(side, kJeepSlot);
    picture.InStock = side == state.LocalSide;
    PutPicture(picture, DestroyedVehicleBox(state.BoardSide, side, kJeepSlot));
}

} // namespace vk

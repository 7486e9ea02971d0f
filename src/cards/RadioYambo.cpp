#include "cards/RadioYambo.h"

#include <array>

namespace vk {

namespace {

const std::array<const char*, 20> kMessages{
    "dringend brandstofdienst",
    "vertrouwelijk luchtaanval",
    "mededeling raad voor de dienstplicht",
    "speciaal algemene mobilisatie",
    "exclusief muiterij",
    "operatie luipaard",
    "stop brandinstrukties uitvoeren",
    "laatste nieuws militaire aanslag",
    "telex voedselvergiftiging",
    "voorrang militaire ambulance",
    "nieuwsbericht tse tse vlieg",
    "officieel ministerie van oorlog",
    "bericht verloven ingetrokken",
    "oproep van het rode kruis gele koorts",
    "nieuwsbericht nieuwjaarsfeest",
    "melding weerbericht",
    "rechtstreekse uitzending carnavalsfeest",
    "laatste nieuws hulp van de geallieerden",
    "zeer geheim spionage",
    "alarm mijnopruimingsdienst",
};

std::string TwoDigits(int n)
{
    return std::string(1, static_cast<char>('0' + n / 10)) + static_cast<char>('0' + n % 10);
}

} // namespace

RadioYamboKind RadioYamboKindOf(int card)
{
    switch (card) {
    case 4: case 6: case 12: case 18: return RadioYamboKind::Specific;
    case 1: case 11: case 19: return RadioYamboKind::Shown;
    default: return card >= 1 && card <= 20 ? RadioYamboKind::Automatic : RadioYamboKind::Shown;
    }
}

std::string RadioYamboMessage(int card)
{
    return card >= 1 && card <= 20 ? kMessages[static_cast<std::size_t>(card - 1)] : "";
}

std::string CardPictureName(int card)
{
    if (card >= 1 && card <= 20)
        return "kompas/raya_" + TwoDigits(card) + ".gif";
    if (card >= 21 && card <= 32)
        return "kompas/pers_" + TwoDigits(card - 20) + ".gif";
    return {};
}

} // namespace vk

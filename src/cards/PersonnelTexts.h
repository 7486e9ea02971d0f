#pragma once

// The words of the Personnel cards played before the dice: the board texts
// that lead the player through the picks, and what the opponent's copy logs
// and shows when the card arrives. All texts UTF-8.

namespace vk {

struct PersonnelPrompts {
    const char* BoardName;  // lower case, behind "personnel - "
    const char* FirstPick;  // empty when the card has no pick
    const char* SecondPick; // empty when it has no second pick
};

// Cards 21 to 32 but 24 and 29; nullptr for any other number.
const PersonnelPrompts* PromptsOf(int card);

// The closing words of the first board text of every card.
inline constexpr const char* kPersonnelClickToPlay =
    " - klik op deze boodschap om uw Personnel kaart uit te voeren";
// The second pick of a Helikopter that starts on its HQ.
inline constexpr const char* kHelicopterFromHQ =
    "dubbelklik op een leeg vakje waar de vliegende banaan je voertuig moet neerzetten";

struct PersonnelReceipt {
    const char* LogLine;    // the time follows
    bool MarksVehicle;      // Kader about the vehicle
    bool MarksField;        // Kader2 about the field
    const char* Title;      // of the notice
    const char* Notice;     // the warning box
    const char* OfferTitle; // of the yes/no box with Contra spionage in hand
    const char* Offer;
};

// The ".pnu" values 1 to 12 but 4 and 9; nullptr for any other.
const PersonnelReceipt* ReceiptOf(int value);

} // namespace vk

#pragma once

// The twenty Radio Yambo messages: what the board says when one is drawn,
// and how the opponent's copy takes it.

#include <string>

namespace vk {

enum class RadioYamboKind {
    Shown,     // the opponent's copy only shows it (1, 11, 19)
    Automatic, // both copies can work out its effect alone
    Specific,  // the effect depends on a choice of the drawer, sent in ".ray" (4, 6, 12, 18)
};

// Kind and board message of card 1..20; Shown and "" outside.
RadioYamboKind RadioYamboKindOf(int card);
std::string RadioYamboMessage(int card);

// The picture of a compass card in the program folder: "kompas/raya_NN.gif"
// for 1..20, "kompas/pers_NN.gif" with the number less 20 for 21..32, empty
// for any other number.
std::string CardPictureName(int card);

} // namespace vk

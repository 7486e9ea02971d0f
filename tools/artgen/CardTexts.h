#pragma once

#include <QString>

namespace vk::art {

// The words printed on a compass card. For Radio Yambo (cards 1..20) the
// title is the radio message as the game broadcasts it and the text tells
// what it does; for Personnel (cards 21..32) the title is the card's name and
// the text a short note on its use. Both in Dutch.
struct CardWords {
  QString title;
  QString text;
};

CardWords RadioYamboWords(int card);   // 1..20
CardWords PersonnelWords(int card);    // 21..32

}  // namespace vk::art

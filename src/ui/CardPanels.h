#pragma once

// The two card panels: `Personnel`, which shows a Personnel card of a hand or
// the one just drawn, with its information box, and `RadioYambo`, which shows
// a Radio Yambo message and moves between the right edge and the middle of
// the window on a double click.

#include <QString>

namespace vk {

class Hoofdvenster;

// The picture of compass card 1..32 in the program folder.
QString CardPicture(int card);

// Which card the Personnel panel shows, by its tag: 1 or 2 for that hand
// slot, 3 for the card just drawn, 0 for any other tag.
int ShownCardSlot(const Hoofdvenster& w);
// The card of that slot: the local hand's slot 1 or 2, CurrentCard for 3,
// 0 for any other tag.
int ShownCard(const Hoofdvenster& w);

// Shows the picture of `card` in the Personnel panel, the tag left as it is.
void ShowPersonnelPicture(Hoofdvenster& w, int card);
// Shows Radio Yambo card `card`.
void ShowRadioYamboCard(Hoofdvenster& w, int card);

// "Meer Info...": the information box of the card the panel shows.
void cmd_Info_Click(Hoofdvenster& w);
// A double click on the Personnel card: closes a card shown from the
// opponent's hand (tag "DK"), nothing otherwise.
void PersonnelCard_DblClick(Hoofdvenster& w, bool textImage);
// A double click on the Radio Yambo card: from the right edge to the middle,
// or back to the right edge.
void RadioYamboCard_DblClick(Hoofdvenster& w);

void ConnectCardPanels(Hoofdvenster& w);

} // namespace vk

#include "game/GameFlow.h"

#include "board/BoardHandlers.h"
#include "game/CompassDraw.h"
#include "game/ComputerOpponent.h"
#include "game/DicePanel.h"
#include "game/StopGame.h"
#include "ui/CardPanels.h"
#include "ui/Hoofdvenster.h"

namespace vk {

void ConnectGameControls(Hoofdvenster& w)
{
    w.cmdStart->Click = [&w] { cmdStart_Click(w); };
    w.cmdComputer->Click = [&w] { cmdComputer_Click(w); };
    w.cmdStop->Click = [&w] { cmdStop_Click(w); };

    w.cmdGooi->Click = [&w] { cmdGooi_Click(w); };
    w.cmdEindeBeurt->Click = [&w] { cmdEindeBeurt_Click(w); };
    w.cmdKompasGebruik->Click = [&w] { cmdKompasGebruik_Click(w); };
    w.cmdKompasSluit->Click = [&w] { cmdKompasSluit_Click(w); };
    w.KK1->Mouse.Click = [&w] { KK1_Click(w); };
    w.KK2->Mouse.Click = [&w] { KK2_Click(w); };
    w.KK3->Mouse.Click = [&w] { KK3_Click(w); };
    ConnectCardPanels(w);
    w.Dice_1->Mouse.DblClick = [&w] { Dice_1_DblClick(w); };
    w.Dice_2->Mouse.DblClick = [&w] { Dice_2_DblClick(w); };
    w.Dices->Mouse.DblClick = [&w] { Dices_DblClick(w); };

    w.Speelveld->Mouse.MouseDown = [&w](int, int x, int y) { Speelveld_MouseDown(w, x, y); };
    w.Speelveld->Mouse.DblClick = [&w] { BoardDoubleClick(w); };
    for (int side = 1; side <= 2; ++side) {
        auto& vehicles = side == 1 ? w.Voertuig_1 : w.Voertuig_2;
        for (int slot = 0; slot < static_cast<int>(vehicles.size()); ++slot) {
            ImageControl* vehicle = vehicles[static_cast<std::size_t>(slot)];
            vehicle->Mouse.Click = [&w, side, slot] { WaitForSecondClick(w, side, slot); };
            vehicle->Mouse.DblClick = [&w] { VehicleDoubleClickSeen(w); };
        }
        auto& mines = side == 1 ? w.Mijn_1 : w.Mijn_2;
        for (int mine = 0; mine < static_cast<int>(mines.size()); ++mine)
            mines[static_cast<std::size_t>(mine)]->Mouse.DblClick = [&w, side, mine] { MineDoubleClick(w, side, mine); };
    }
    w.VehDblClickTimer->Timer = [&w] { VehDblClickTimer_Timer(w); };
}

} // namespace vk

#include "game/DicePanel.h"

#include "game/PhaseTable.h"
#include "game/ScriptedDice.h"
#include "shell/Clock.h"
#include "shell/Global.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

// The picture a choice of dice stands for, and the other choices that are
// closed while it is chosen at phase 4.
struct DiceChoice {
    ImageControl* Picture;
    std::array<ImageControl*, 2> Others;
};

void ChooseOrUnchoose(Hoofdvenster& w, PhaseEvent event, const DiceChoice& choice)
{
    WindowValues& v = w.V;
    const int before = v.GamePhase;
    const int after = NextPhase(event, before);
    if (after < 0)
        return;
    v.GamePhase = after;
    const bool selecting = after != 4 && after != 9 && after != 18;
    if (selecting) {
        w.DiceKader->SetLeft(choice.Picture->Left());
        w.DiceKader->SetVisible(true);
    } else {
        w.DiceKader->SetVisible(false);
    }
    // Only the choice at phase 4 closes and opens the other dice.
    if (before == 4 || after == 4)
        for (ImageControl* other : choice.Others)
            other->SetEnabled(!selecting);
    w.cmdEindeBeurt->SetEnabled(!selecting);
}

int RollOneDie(WindowValues& v)
{
    if (const std::optional<int> scripted = NextScriptedDie())
        return *scripted;
    return RollDie(v.DiceTable, v.RollDie, v.Random, SecondsSinceMidnight());
}

} // namespace

void cmdGooi_Click(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    if (v.Progress.TurnNumber > 0 && v.GamePhase != 0 && v.GamePhase != 3)
        return;
    w.cmdGooi->SetEnabled(false);
    w.cmdEindeBeurt->SetEnabled(false);
    for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.Dice_2, w.MiniDice_1, w.MiniDice_2})
        c->SetVisible(false);
    WaitMs(200);
    const int first = RollOneDie(v);
    Speel(*w.ESound1, v.Sound, SoundDice);
    WaitMs(1800);
    const int second = RollOneDie(v);
    ShowDicePictures(w, first, second);
    for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.Dice_2, w.MiniDice_1, w.MiniDice_2})
        c->SetVisible(true);
    w.cmdEindeBeurt->SetEnabled(true);
    if (v.Progress.TurnNumber > 0) {
        for (Control* c : std::initializer_list<Control*>{w.Dice_1, w.Dice_2, w.Dices})
            c->SetEnabled(true);
        w.KK1->SetEnabled(false);
        w.KK2->SetEnabled(false);
        v.GamePhase = 4;
    }
    // Stored last: the toss waits for both values.
    v.Dice1 = first;
    v.Dice2 = second;
}

void ShowDicePictures(Hoofdvenster& w, int left, int right)
{
    const auto picture = [](int value) {
        return Global().ProgramFolder + QStringLiteral("dice") + QString::number(value) + QStringLiteral(".gif");
    };
    w.Dice_1->SetPicture(picture(left));
    w.MiniDice_1->SetPicture(picture(left));
    w.Dice_2->SetPicture(picture(right));
    w.MiniDice_2->SetPicture(picture(right));
}

void Dice_1_DblClick(Hoofdvenster& w)
{
    ChooseOrUnchoose(w, PhaseEvent::Dice1, DiceChoice{w.Dice_1, {w.Dice_2, w.Dices}});
}

void Dice_2_DblClick(Hoofdvenster& w)
{
    ChooseOrUnchoose(w, PhaseEvent::Dice2, DiceChoice{w.Dice_2, {w.Dice_1, w.Dices}});
}

void Dices_DblClick(Hoofdvenster& w)
{
    ChooseOrUnchoose(w, PhaseEvent::BothDice, DiceChoice{w.Dices, {w.Dice_1, w.Dice_2}});
}

void cmdEindeBeurt_Click(Hoofdvenster& w)
{
    const int next = NextPhase(PhaseEvent::EindeBeurt, w.V.GamePhase);
    if (next >= 0)
        w.V.GamePhase = next;
}

void cmdKompasGebruik_Click(Hoofdvenster& w)
{
    const int next = NextPhase(PhaseEvent::KompasGebruik, w.V.GamePhase);
    if (next >= 0)
        w.V.GamePhase = next;
}

void cmdKompasSluit_Click(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    const int next = NextPhase(PhaseEvent::KompasSluit, v.GamePhase);
    if (next < 0)
        return;
    if (v.GamePhase == 1) {
        w.cmdGooi->SetVisible(true);
        w.cmdEindeBeurt->SetEnabled(true);
    } else {
        w.KK3->SetVisible(true);
        w.cmdGooi->SetVisible(false);
        w.cmdEindeBeurt->SetEnabled(false);
    }
    v.GamePhase = next;
    w.Personnel->SetVisible(false);
    w.KK1->SetVisible(true);
    w.KK2->SetVisible(v.Progress.Deck.CardCount[static_cast<std::size_t>(v.Board.LocalSide - 1)] == 2);
    w.cmdKompasSluit->SetVisible(false);
    w.cmdKompasGebruik->SetVisible(false);
}

} // namespace vk

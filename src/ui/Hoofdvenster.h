#pragma once

// The main window with every named control of the game, each a real widget
// whose objectName is the control's name, placed in twips.

#include "ui/ControlRegistry.h"
#include "ui/Controls.h"
#include "ui/Sound.h"
#include "ui/WindowSizeRule.h"
#include "ui/WindowValues.h"

#include <QWidget>

#include <array>

namespace vk {

class Hoofdvenster : public QWidget, public Control {
public:
    Hoofdvenster();
    QObject* Object() override { return this; }
    QString Caption() const override { return windowTitle(); }
    void SetCaption(const QString& text) override { setWindowTitle(text); }
    void Move(int left, int top, int width, int height) override;
    bool Reachable() const override { return isVisible() && isEnabled(); }

    ControlRegistry& Controls() { return controls_; }
    WindowValues V;

    // Window state as the size rule sees it; setting it runs the rule at once.
    WindowShowState ShowState() const;
    void SetShowState(WindowShowState state);
    // The resize event: the window size rule.
    void Form_Resize();
    // Centres the window on the screen.
    void CentreOnScreen();

    // The running text: one firing of Scroll_Timer, and a click on msgBoard.
    void Timer_Scroll();

    // Top level
    ImageControl* Speelveld;
    FrameControl* frmGameControl;
    FrameControl* frLokaal;
    FrameControl* frExtern;
    FrameControl* frDices;
    FrameControl* Stock;
    FrameControl* Homers;
    TickerLabel* msgBoard;
    PanelControl* Personnel;
    PanelControl* RadioYambo;
    PanelControl* Gevang_1;
    PanelControl* Gevang_2;
    std::array<PanelControl*, 2> KampComp;
    PanelControl* Vlagdekking_1;
    PanelControl* Vlagdekking_2;
    std::array<ImageControl*, 11> Voertuig_1;
    std::array<ImageControl*, 11> Voertuig_2;
    // Member `slot` of Voertuig_1 or Voertuig_2; a slot outside 0..10 has no
    // control and raises the program's run-time fault.
    ImageControl& Voertuig(int side, int slot) const;
    std::array<ImageControl*, 5> Mijn_1;
    std::array<ImageControl*, 5> Mijn_1_2;
    std::array<ImageControl*, 5> Mijn_2;
    std::array<ImageControl*, 5> Mijn_2_1;
    ShapeControl* Kader;
    ShapeControl* Kader2;
    SoundControl* ESound1;
    TimerControl* Action_Timer;
    TimerControl* Scroll_Timer;
    TimerControl* VehDblClickTimer;

    // In frmGameControl
    ButtonControl* cmdStart;
    ButtonControl* cmdStop;
    ButtonControl* cmdRules;
    ButtonControl* Cmd_HowTo;
    ButtonControl* cmdSluiten;

    // In frLokaal
    TextBoxControl* User_Name;
    CheckBoxControl* ShareStatus;
    ButtonControl* cmdDisconnect;

    // In frExtern
    ComboBoxControl* Combo_ExternUsers;
    CheckBoxControl* Check1;
    ButtonControl* cmdRequestToPlay;
    ButtonControl* cmdComputer;  // "Tegen de computer": a game against a computer player
    ButtonControl* Cmd_AddFolder;
    ButtonControl* Cmd_RemoveFolder;

    // In frDices
    ButtonControl* cmdGooi;
    ButtonControl* cmdEindeBeurt;
    ButtonControl* cmdKompasGebruik;
    ButtonControl* cmdKompasSluit;
    ImageControl* Dice_1;
    ImageControl* Dice_2;
    ImageControl* Dices;
    ImageControl* MiniDice_1;
    ImageControl* MiniDice_2;
    ShapeControl* DiceKader;
    ImageControl* KK1;
    ImageControl* KK2;
    ImageControl* KK3;

    // In the panels
    ButtonControl* cmd_Info;
    ImageControl* imgPersonnel;
    ImageControl* imgPersTekst;
    ImageControl* imgRadioYambo;
    ImageControl* imgRaYaTekst;
    std::array<ImageControl*, 20> GV1;
    std::array<ImageControl*, 20> GV2;
    std::array<ImageControl*, 25> KmpCmp_1;
    std::array<ImageControl*, 25> KmpCmp_2;
    std::array<ImageControl*, 25> Image2;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    template <class T> T* Add(T* control);
    void BuildTopLevel();
    void BuildGameControl();
    void BuildLocalPlayer();
    void BuildExternalPlayer();
    void BuildDices();
    void BuildPanels();

    ControlRegistry controls_;
    bool inResizeRule_ = false;
};

} // namespace vk

#include "ui/Hoofdvenster.h"

#include "board/BoardState.h"
#include "shell/FaultReport.h"
#include "shell/Global.h"
#include "shell/RunTimeFault.h"
#include "ui/Dialogs.h"
#include "ui/MessageBoard.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

namespace vk {

namespace {

// Frames and check boxes share this back colour.
constexpr int FrameBackColor = 12624992;
constexpr int BoardLabelBackColor = 8454143;

const char* const DiceToolTipSingle = "Dubbelklik hier om deze dobbelsteen apart te gebruiken";
const char* const DiceToolTipBoth = "Dubbelklik hier om de dobbelstenen samen te gebruiken";
const char* const CardToolTip = "Klik om deze kaart in te kijken";

} // namespace

template <class T> T* Hoofdvenster::Add(T* control)
{
    controls_.Add(control);
    return control;
}

Hoofdvenster::Hoofdvenster() : QWidget(nullptr), Control(ControlKind::Form)
{
    setObjectName(QStringLiteral("Hoofdvenster"));
    setWindowTitle(QStringLiteral("Valkenhorn!"));
    controls_.Add(this);

    BuildTopLevel();
    BuildGameControl();
    BuildLocalPlayer();
    BuildExternalPlayer();
    BuildDices();
    BuildPanels();

    // Markers lie above everything on the board.
    Kader = Add(new ShapeControl(this, QStringLiteral("Kader"), 255, 3));
    Kader->Move(5400, 4200, 735, 375);
    Kader->SetVisible(false);
    Kader2 = Add(new ShapeControl(this, QStringLiteral("Kader2"), 0xFF0000, 3));
    Kader2->Move(5400, 3720, 735, 375);
    Kader2->SetVisible(false);

    ESound1 = new SoundControl(this);

    Action_Timer = Add(new TimerControl(this, QStringLiteral("Action_Timer"), 50));
    Scroll_Timer = Add(new TimerControl(this, QStringLiteral("Scroll_Timer"), 40));
    Scroll_Timer->Timer = [this] { Timer_Scroll(); };
    VehDblClickTimer = Add(new TimerControl(this, QStringLiteral("VehDblClickTimer"), 0));


    SetDialogParent(this);
}

void Hoofdvenster::BuildTopLevel()
{
    // The board lies at the bottom; everything else stands on it.
    Speelveld = Add(new ImageControl(this, QStringLiteral("Speelveld"), true));
    Speelveld->Move(0, 0, kSplashWidth, kSplashHeight);

    for (int i = 0; i < 11; ++i) {
        Voertuig_1[static_cast<size_t>(i)] = Add(new ImageControl(this, ArrayMemberName(QStringLiteral("Voertuig_1"), i)));
        Voertuig_1[static_cast<size_t>(i)]->Move(0, 0, 750, 330);
    }
    for (int i = 0; i < 11; ++i) {
        Voertuig_2[static_cast<size_t>(i)] = Add(new ImageControl(this, ArrayMemberName(QStringLiteral("Voertuig_2"), i)));
        Voertuig_2[static_cast<size_t>(i)]->Move(0, 0, 750, 330);
    }
    auto mines = [this](std::array<ImageControl*, 5>& array, const QString& name) {
        for (int i = 0; i < 5; ++i) {
            array[static_cast<size_t>(i)] = Add(new ImageControl(this, ArrayMemberName(name, i)));
            array[static_cast<size_t>(i)]->Move(0, 0, 205, 330);
        }
    };
    mines(Mijn_1, QStringLiteral("Mijn_1"));
    mines(Mijn_1_2, QStringLiteral("Mijn_1_2"));
    mines(Mijn_2, QStringLiteral("Mijn_2"));
    mines(Mijn_2_1, QStringLiteral("Mijn_2_1"));
    // A captured mine shows only once it has been brought into the enemy's camp.
    for (auto* captured : {&Mijn_1_2, &Mijn_2_1})
        for (ImageControl* mine : *captured)
            mine->SetVisible(false);

    frmGameControl = Add(new FrameControl(this, QStringLiteral("frmGameControl"), QStringLiteral("Spel Controle")));
    // Moved from 120, 4920 (over fields 71, 79 and the HQ of army 1) to the sea below the board.
    frmGameControl->Move(120, 12300, 8655, 735);

    frLokaal = Add(new FrameControl(this, QStringLiteral("frLokaal"), QStringLiteral("Lokale Speler")));
    frLokaal->Move(0, 0, 4815, 735);
    frLokaal->SetEnabled(false);

    frExtern = Add(new FrameControl(this, QStringLiteral("frExtern"), QStringLiteral("Externe Speler")));
    // Moved from 9360, 120 (over fields 5 to 9) to open sea in the lower half.
    // Taller than the design's frame by one row, for "Tegen de computer".
    frExtern->Move(14160, 9960, 2175, 3180);
    frExtern->SetEnabled(false);

    frDices = Add(new FrameControl(this, QStringLiteral("frDices"), QStringLiteral("Actie Commando")));
    // Until the board's redraw moves it, it stands where the redraw of view 1
    // puts it: its design place 2160, 960 covers the prison island of army 2.
    frDices->Move(12720, 6930, 2775, 2175);

    Stock = Add(new FrameControl(this, QStringLiteral("Stock"), QStringLiteral("Arsenaal")));
    // Moved from 7920, 0 (over fields 2 to 4, 20, 21) to the sea along the right edge.
    Stock->Move(24120, 240, 1095, 5655);

    Homers = Add(new FrameControl(this, QStringLiteral("Homers"), QStringLiteral("Komp.")));
    // Moved from 960, 960 (over the prison island of army 2) to the sea below it.
    Homers->Move(960, 3180, 1095, 2055);

    for (FrameControl* frame : {frmGameControl, frLokaal, frExtern, frDices, Stock, Homers})
        frame->SetBackColor(FrameBackColor);

    msgBoard = Add(new TickerLabel(this, QStringLiteral("msgBoard")));
    msgBoard->Move(4920, 120, 2895, 375);
    msgBoard->SetFont(QStringLiteral("Liberation Mono"), 16, true);
    msgBoard->SetBackColor(BoardLabelBackColor);
    msgBoard->setFrameShape(QFrame::Box);
    msgBoard->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    Personnel = Add(new PanelControl(this, QStringLiteral("Personnel")));
    Personnel->Move(6480, 2880, 1095, 1575);
    RadioYambo = Add(new PanelControl(this, QStringLiteral("RadioYambo")));
    RadioYambo->Move(9360, 3240, 1695, 1215);
    Gevang_1 = Add(new PanelControl(this, QStringLiteral("Gevang_1")));
    Gevang_1->Move(2160, 3360, 1560, 360);
    Gevang_2 = Add(new PanelControl(this, QStringLiteral("Gevang_2")));
    Gevang_2->Move(2160, 4080, 1560, 360);
    KampComp[0] = Add(new PanelControl(this, ArrayMemberName(QStringLiteral("KampComp"), 0)));
    KampComp[0]->Move(5400, 2760, 855, 855);
    KampComp[1] = Add(new PanelControl(this, ArrayMemberName(QStringLiteral("KampComp"), 1)));
    KampComp[1]->Move(5040, 1920, 1215, 615);
    Vlagdekking_1 = Add(new PanelControl(this, QStringLiteral("Vlagdekking_1")));
    Vlagdekking_1->Move(7320, 600, 415, 2120);
    Vlagdekking_2 = Add(new PanelControl(this, QStringLiteral("Vlagdekking_2")));
    Vlagdekking_2->Move(5040, 600, 2120, 415);
    for (PanelControl* panel : {Gevang_1, Gevang_2, KampComp[0], KampComp[1], Vlagdekking_1, Vlagdekking_2}) {
        panel->setFrameShape(QFrame::NoFrame);
    }
}

void Hoofdvenster::BuildGameControl()
{
    auto button = [this](const char* name, const char* caption, int left, bool enabled) {
        auto* b = Add(new ButtonControl(frmGameControl, QString::fromLatin1(name), QString::fromUtf8(caption)));
        b->Move(left, 240, 1455, 300);
        b->SetEnabled(enabled);
        return b;
    };
    cmdStart = button("cmdStart", "Spel Starten", 240, false);
    cmdStop = button("cmdStop", "Spel Stoppen", 1920, false);
    cmdRules = button("cmdRules", "Spelregels...", 3600, true);
    Cmd_HowTo = button("Cmd_HowTo", "Hoe verbinden?", 5280, true);
    cmdSluiten = button("cmdSluiten", "Afsluiten", 6960, true);
}

void Hoofdvenster::BuildLocalPlayer()
{
    User_Name = Add(new TextBoxControl(frLokaal, QStringLiteral("User_Name"), QStringLiteral("je_naam")));
    User_Name->Move(240, 240, 1575, 325);
    User_Name->setMaxLength(10);
    User_Name->SetBackColor(Red);

    ShareStatus = Add(new CheckBoxControl(frLokaal, QStringLiteral("ShareStatus"), QStringLiteral("Aanwezig")));
    ShareStatus->Move(2040, 240, 1095, 255);
    ShareStatus->SetBackColor(FrameBackColor);
    ShareStatus->SetEnabled(false);

    cmdDisconnect = Add(new ButtonControl(frLokaal, QStringLiteral("cmdDisconnect"), QStringLiteral("Verbreken")));
    cmdDisconnect->Move(3240, 240, 1335, 300);
    cmdDisconnect->SetEnabled(false);
}

void Hoofdvenster::BuildExternalPlayer()
{
    Combo_ExternUsers = Add(new ComboBoxControl(frExtern, QStringLiteral("Combo_ExternUsers")));
    Combo_ExternUsers->Move(240, 240, 1575, 315);
    Combo_ExternUsers->SetBackColor(Red);

    Check1 = Add(new CheckBoxControl(frExtern, QStringLiteral("Check1"), QStringLiteral("Verbonden")));
    Check1->Move(240, 720, 1215, 255);
    Check1->SetBackColor(FrameBackColor);
    Check1->SetEnabled(false);

    cmdRequestToPlay = Add(new ButtonControl(frExtern, QStringLiteral("cmdRequestToPlay"), QStringLiteral("Uitnodigen")));
    cmdRequestToPlay->Move(240, 1200, 1695, 300);
    cmdRequestToPlay->SetEnabled(false);

    Cmd_AddFolder = Add(new ButtonControl(frExtern, QStringLiteral("Cmd_AddFolder"), QStringLiteral("Map toevoegen...")));
    Cmd_AddFolder->Move(240, 1680, 1695, 300);

    Cmd_RemoveFolder = Add(new ButtonControl(frExtern, QStringLiteral("Cmd_RemoveFolder"), QStringLiteral("Map verwijderen...")));
    Cmd_RemoveFolder->Move(240, 2160, 1695, 300);
    Cmd_RemoveFolder->SetEnabled(false);

    cmdComputer = Add(new ButtonControl(frExtern, QStringLiteral("cmdComputer"), QStringLiteral("Tegen de computer")));
    cmdComputer->Move(240, 2640, 1695, 300);
}

void Hoofdvenster::BuildDices()
{
    auto button = [this](const char* name, const char* caption, int left, int top, int width, int height) {
        auto* b = Add(new ButtonControl(frDices, QString::fromLatin1(name), QString::fromUtf8(caption)));
        b->Move(left, top, width, height);
        return b;
    };
    cmdGooi = button("cmdGooi", "Gooien", 960, 1200, 855, 375);
    cmdEindeBeurt = button("cmdEindeBeurt", "Einde Beurt", 720, 1680, 1335, 375);
    cmdKompasGebruik = button("cmdKompasGebruik", "Gebruik", 1800, 1200, 855, 375);
    cmdKompasSluit = button("cmdKompasSluit", "Sluit", 120, 1200, 855, 375);

    auto image = [this](const char* name, const char* toolTip, int left, int top, int width, int height) {
        auto* i = Add(new ImageControl(frDices, QString::fromLatin1(name), true));
        i->Move(left, top, width, height);
        if (toolTip)
            i->SetToolTip(QString::fromUtf8(toolTip));
        return i;
    };
    Dice_1 = image("Dice_1", DiceToolTipSingle, 240, 360, 615, 615);
    Dice_2 = image("Dice_2", DiceToolTipSingle, 1920, 360, 615, 615);
    Dices = image("Dices", DiceToolTipBoth, 1080, 360, 615, 615);
    MiniDice_1 = image("MiniDice_1", nullptr, 1080, 360, 305, 305);
    MiniDice_2 = image("MiniDice_2", nullptr, 1390, 670, 305, 305);

    DiceKader = Add(new ShapeControl(frDices, QStringLiteral("DiceKader"), 255, 3));
    DiceKader->Move(1080, 360, 615, 615);
    DiceKader->SetVisible(false);

    KK1 = image("KK1", CardToolTip, 360, 1080, 375, 495);
    KK2 = image("KK2", CardToolTip, 2040, 1080, 375, 495);
    KK3 = image("KK3", CardToolTip, 1200, 1080, 375, 495);
}

void Hoofdvenster::BuildPanels()
{
    cmd_Info = Add(new ButtonControl(Personnel, QStringLiteral("cmd_Info"), QStringLiteral("Meer Info...")));
    cmd_Info->Move(0, 360, 1095, 300);
    imgPersonnel = Add(new ImageControl(Personnel, QStringLiteral("imgPersonnel"), true));
    imgPersonnel->Move(0, 0, 1095, 1575);
    imgPersTekst = Add(new ImageControl(Personnel, QStringLiteral("imgPersTekst"), true));
    imgPersTekst->Move(0, 0, 1095, 1575);
    cmd_Info->raise();

    imgRadioYambo = Add(new ImageControl(RadioYambo, QStringLiteral("imgRadioYambo"), true));
    imgRadioYambo->Move(0, 0, 1695, 1215);
    imgRaYaTekst = Add(new ImageControl(RadioYambo, QStringLiteral("imgRaYaTekst"), true));
    imgRaYaTekst->Move(0, 0, 1695, 1215);
    for (ImageControl* card : {imgRadioYambo, imgRaYaTekst})
        card->SetToolTip(QStringLiteral("Dubbelklik om deze kaart naar rechts te verplaatsen"));

    // Prisoners: three staggered rows of 7, 6 and 7 with a step of 240.
    auto prison = [this](std::array<ImageControl*, 20>& array, PanelControl* panel, const QString& name) {
        for (int i = 0; i < 20; ++i) {
            const int row = i < 7 ? 0 : (i < 13 ? 1 : 2);
            const int column = i < 7 ? i : (i < 13 ? i - 7 : i - 13);
            auto* image = Add(new ImageControl(panel, ArrayMemberName(name, i), true));
            image->Move(column * 240 + (row == 1 ? 120 : 0), row * 120, 120, 120);
            array[static_cast<size_t>(i)] = image;
        }
    };
    prison(GV1, Gevang_1, QStringLiteral("GV1"));
    prison(GV2, Gevang_2, QStringLiteral("GV2"));

    // Camp companies: five rows of five in the square camp panel, three staggered rows in the wide one.
    for (int i = 0; i < 25; ++i) {
        auto* image = Add(new ImageControl(KampComp[0], ArrayMemberName(QStringLiteral("KmpCmp_1"), i), true));
        image->Move(30 + (i % 5) * 165, 30 + (i / 5) * 165, 120, 120);
        KmpCmp_1[static_cast<size_t>(i)] = image;
    }
    for (int i = 0; i < 25; ++i) {
        const int row = i < 9 ? 0 : (i < 17 ? 1 : 2);
        const int column = i < 9 ? i : (i < 17 ? i - 9 : i - 17);
        auto* image = Add(new ImageControl(KampComp[1], ArrayMemberName(QStringLiteral("KmpCmp_2"), i), true));
        image->Move(15 + column * 135 + (row == 1 ? 67 : 0), 15 + row * 225, 120, 120);
        KmpCmp_2[static_cast<size_t>(i)] = image;
    }
    // Reserve companies in Homers, under the frame's title.
    for (int i = 0; i < 25; ++i) {
        auto* image = Add(new ImageControl(Homers, ArrayMemberName(QStringLiteral("Image2"), i), true));
        image->Move(90 + (i % 5) * 180, 300 + (i / 5) * 330, 120, 120);
        Image2[static_cast<size_t>(i)] = image;
    }
}

ImageControl& Hoofdvenster::Voertuig(int side, int slot) const
{
    CheckIndex(side, 1, 2, "Side");
    const char* array = side == 1 ? "Voertuig_1" : "Voertuig_2";
    CheckIndex(slot, 0, static_cast<int>(Voertuig_1.size()) - 1, array);
    return *(side == 1 ? Voertuig_1 : Voertuig_2)[static_cast<std::size_t>(slot)];
}

void Hoofdvenster::Move(int left, int top, int width, int height)
{
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    setGeometry(TwipsToPixels(left), TwipsToPixels(top), TwipsToPixels(width), TwipsToPixels(height));
}

WindowShowState Hoofdvenster::ShowState() const
{
    const Qt::WindowStates state = windowState();
    if (state & Qt::WindowMinimized)
        return WindowShowState::Minimised;
    if (state & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return WindowShowState::Maximised;
    return WindowShowState::Normal;
}

void Hoofdvenster::SetShowState(WindowShowState state)
{
    switch (state) {
    case WindowShowState::Normal: setWindowState(Qt::WindowNoState); break;
    case WindowShowState::Minimised: setWindowState(Qt::WindowMinimized); break;
    case WindowShowState::Maximised: setWindowState(Qt::WindowMaximized); break;
    }
    Form_Resize();
}

void Hoofdvenster::Form_Resize()
{
    if (inResizeRule_)
        return;
    inResizeRule_ = true;
    const WindowShowState state = ShowState();
    int width = PixelsToTwips(this->width());
    int height = PixelsToTwips(this->height());
    if (state == WindowShowState::Maximised) {
        // A maximised window fills the screen's work area, whether or not a window manager has applied it yet.
        QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
        const QRect area = screen->availableGeometry();
        width = PixelsToTwips(area.width());
        height = PixelsToTwips(area.height());
    }
    const WindowSizeVerdict verdict = ApplyWindowSizeRule(state, width, height, V.MinWidth, V.MinHeight);
    if (verdict.screenTooSmall) {
        MessageBox(QStringLiteral("Spijtig, maar je scherm is niet groot genoeg om dit spel te spelen. Het programma wordt afgesloten."),
                   BoxButtons::Ok, BoxIcon::Stop, QStringLiteral("Scherm voldoet niet!"));
        EndProcess(0);
    }
    if (verdict.resize) {
        resize(TwipsToPixels(verdict.width), TwipsToPixels(verdict.height));
        width_ = verdict.width;
        height_ = verdict.height;
    }
    // Keep the exact twips while the window has the pixel size they give.
    if (TwipsToPixels(width_) != this->width())
        width_ = PixelsToTwips(this->width());
    if (TwipsToPixels(height_) != this->height())
        height_ = PixelsToTwips(this->height());
    inResizeRule_ = false;
}

void Hoofdvenster::CentreOnScreen()
{
    QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen->geometry();
    const int left = (PixelsToTwips(area.width()) - PixelsToTwips(width())) / 2;
    const int top = (PixelsToTwips(area.height()) - PixelsToTwips(height())) / 2;
    Move(left, top, PixelsToTwips(width()), PixelsToTwips(height()));
}

void Hoofdvenster::Timer_Scroll()
{
    const ScrollStep step = ScrollOnce(Global().BoardText, msgBoard->Visible());
    if (step.hide) {
        msgBoard->SetVisible(false);
        return;
    }
    if (step.show) {
        msgBoard->SetVisible(true);
        Speel(*ESound1, V.Sound, SoundMessage);
    }
    msgBoard->SetCaption(step.caption);
}

void Hoofdvenster::closeEvent(QCloseEvent* event)
{
    // Every close request is refused: the title bar, the system menu and a
    // close from outside alike. The only way out is cmdSluiten.
    event->ignore();
}

void Hoofdvenster::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Guarded([this] { Form_Resize(); });
}

void Hoofdvenster::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        Guarded([this] { Form_Resize(); });
}

} // namespace vk

#include "GameplayFixture.h"

#include "board/Movement.h"
#include "board/Picking.h"
#include "board/VehicleTag.h"
#include "game/DiceTable.h"
#include "ui/BoardDisplay.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace vk::test {

::std::ostream& operator<<(::std::ostream& out, const PlacedBox& box)
{
    return out << "{" << box.Left << ", " << box.Top << ", " << box.Width << ", " << box.Height << "}";
}

std::string text::OneDie(int die, int value, bool campOpen)
{
    return "u koos voor dobbelsteen " + std::to_string(die) + ", deze heeft de waarde " + std::to_string(value) +
           (campOpen ? kCamp : kNoCamp);
}

void GameplayTest::SetUp()
{
    EnsureApplication();
    ASSERT_TRUE(scratch.isValid());
    oldConfig = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", (scratch.path() + QStringLiteral("/config")).toLocal8Bit());
    OpenRunLog(scratch.path() + QStringLiteral("/Valkenhorn.log"));

    GlobalValues& g = Global();
    g.ProgramFolder = WithBackslash(QStringLiteral(VALKENHORN_PROGRAM_DIR));
    g.ArmyImageFolder[0] = g.ProgramFolder + QStringLiteral("groen_leger/");
    g.ArmyImageFolder[1] = g.ProgramFolder + QStringLiteral("bruin_leger/");
    g.DataFolder = scratch.path() + QStringLiteral("/data/");
    QDir().mkpath(g.DataFolder);
    g.LocalID = QStringLiteral("0A0A0A0A0A0A");
    g.LocalUser = QStringLiteral("anna");
    g.LinkBusy = false;
    folder = scratch.path() + QStringLiteral("/gedeeld1");
    QDir().mkpath(folder);
    g.Folder = QStringList{QString(), folder};
    g.External_User = QStringList{QString(), QStringLiteral("bert")};
    g.Active = QVector<bool>{false, true};
    g.ExtUsersCount = 1;
    g.BoardText.clear();

    window = std::make_unique<Hoofdvenster>();
    ConnectGameControls(*window);
    window->Combo_ExternUsers->clear();
    window->Combo_ExternUsers->addItem(QStringLiteral("Geen Speler"));
    window->Combo_ExternUsers->addItem(QStringLiteral("bert"));
    window->Combo_ExternUsers->SetListIndex(1);
    V().SelectedUser = 1;
    // Start-up gives the board its full size and the double-click timer the
    // platform's interval; here a short one.
    window->Speelveld->Move(window->Speelveld->Left(), window->Speelveld->Top(), kBoardWidth, kBoardHeight);
    window->VehDblClickTimer->SetInterval(kSlowClickWindowMs);
    NextRoll(3, 3);

    answerer = std::make_unique<QTimer>();
    answerer->setInterval(5);
    QObject::connect(answerer.get(), &QTimer::timeout, [this] {
        if (const OpenDialog* open = CurrentDialog(); open && open->kind == QLatin1String("message")) {
            // A box answered may still stand at the next tick, until its loop
            // has ended: it counts once.
            if (answered && open->dialog == answered.data())
                return;
            answered = open->dialog;
            boxes << open->title + QLatin1Char('|') + open->text;
            if (open->buttons.contains(QStringLiteral("ok")))
                AnswerDialog(QStringLiteral("ok"));
            else if (yesTo.removeOne(open->title))
                AnswerDialog(QStringLiteral("yes"));
            else
                AnswerDialog(QStringLiteral("no"));
        }
    });
    answerer->start();
}

void GameplayTest::TearDown()
{
    answerer.reset();
    window.reset();
    CloseRunLog();
    qputenv("XDG_CONFIG_HOME", oldConfig);
    Global().ExtUsersCount = 0;
    Global().Folder = QStringList{QString()};
    Global().External_User = QStringList{QString()};
    Global().Active = QVector<bool>{false};
    Global().BoardText.clear();
}

void GameplayTest::StartGame(int localSide, int turn)
{
    ResetNewGame(W());
    if (localSide == 2)
        ToggleBoardSide(B());
    B().LocalSide = localSide;
    V().Progress.ExternalSide = OtherSide(localSide);
    V().Progress.TurnNumber = turn;
    V().GamePhase = 0;
    V().GameRunning = true;
    ClearActionRecord(V().Act);
    // The panel as the turn loop leaves it: open at the own turn.
    W().frDices->SetEnabled((turn % 2 == 1 ? 1 : 2) == localSide);
    ShowBoardView(W());
    Redraw();
    ClearBoard();
}

void GameplayTest::Redraw()
{
    ShowBoard(W());
    for (int side = 1; side <= 2; ++side) {
        ShowCompanies(W(), side);
        ShowFlagCover(W(), side);
    }
}

void GameplayTest::NextRoll(int first, int second)
{
    WindowValues& v = V();
    for (std::int32_t seed = 1;; ++seed) {
        v.Random.Seed(seed);
        SplitMixRandom look = v.Random;
        const int a = static_cast<int>(std::nearbyint(look.Next() * DiceTableSize));
        const int b = static_cast<int>(std::nearbyint(look.Next() * DiceTableSize));
        if (a == b || a >= DiceTableSize || b >= DiceTableSize)
            continue;
        v.DiceTable.fill(static_cast<std::int16_t>(first));
        v.DiceTable[static_cast<std::size_t>(b)] = static_cast<std::int16_t>(second);
        v.RollDie.seeded = true;
        return;
    }
}

void GameplayTest::ToHQ(int side, int slot, int companies)
{
    CampLoadClicks(B(), side, slot, companies);
    ASSERT_TRUE(SendCampVehicleToHQ(B(), side, slot));
    Redraw();
}

void GameplayTest::PutOnField(int side, int slot, int field, int companies)
{
    BoardState& b = B();
    const int old = b.VehiclePos(side, slot);
    if (IsRoadField(old))
        b.BoardCell(old) = 0;
    b.CampCompanies(side) -= companies - b.VehicleCompanies(side, slot);
    b.VehicleCompanies(side, slot) = companies;
    const int heading = FieldAnchorX(field, 0) != -1 ? kEast : kNorth;
    b.VehicleTag(side, slot) = MakeVehicleTag(slot, side, companies, 0, heading);
    b.VehicleDir(side, slot) = heading;
    b.VehiclePos(side, slot) = field;
    b.BoardCell(field) = (side == 1 ? 1 : -1) * (slot + 1);
    const PlacedBox box = VehicleOnFieldBox(View(), field, heading);
    Picture& picture = b.VehiclePicture(side, slot);
    picture.Left = box.Left;
    picture.Top = box.Top;
    picture.Width = box.Width;
    picture.Height = box.Height;
    picture.Visible = true;
    picture.InStock = false;
    Redraw();
}

int GameplayTest::MoveTarget(int side, int slot, int from, int steps, int except)
{
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
        if (field == except || field == FlagField(1) || field == FlagField(2) || B().BoardCell(field) != 0)
            continue;
        const MoveVerdict verdict = JudgeMove(B(), side, slot, from, field, steps, true);
        if (verdict.Legal && !verdict.ShootAllowed && !verdict.MinePickup && !verdict.FlagLoad &&
            !verdict.CompassCrossed)
            return field;
    }
    return -1;
}

int GameplayTest::LayMineInReach(int side, int slot, int from, int& steps, int& owner)
{
    BoardState& b = B();
    for (int army : {OtherSide(side), side}) {
        for (int field = kFirstRoadField; field <= kLastRoadField; ++field) {
            if (MineSide(field) == 0 || b.BoardCell(field) != 0 || field == FlagField(1) || field == FlagField(2))
                continue;
            b.MinePos(army, 0) = field;
            b.BoardCell(field) = (army == 1 ? 1 : -1) * kMineCell;
            for (int s = 1; s <= 6; ++s) {
                const MoveVerdict verdict = JudgeMove(b, side, slot, from, field, s, true);
                if (verdict.Legal && verdict.MinePickup && !verdict.CompassCrossed) {
                    steps = s;
                    owner = army;
                    const PlacedBox laid = LaidMineBox(View(), field);
                    b.MinePicture(army, 0) =
                        Picture{laid.Left, laid.Top, laid.Width, laid.Height, true, false, LaidMineImage(army, field)};
                    Redraw();
                    return field;
                }
            }
            b.MinePos(army, 0) = CampField(army);
            b.BoardCell(field) = 0;
        }
    }
    return -1;
}

void GameplayTest::AtPhase(int phase, const std::string& name, std::function<void()> act)
{
    const QString label = QStringLiteral("phase %1").arg(phase);
    When(name + " (at phase " + std::to_string(phase) + ")",
         [this, phase, label] { return Waiting() == label && V().GamePhase == phase; }, std::move(act));
}

void GameplayTest::When(const std::string& name, std::function<bool()> ready, std::function<void()> act)
{
    steps_.push_back(Step{name, std::move(ready), std::move(act)});
}

void GameplayTest::Run(const std::function<void()>& body, int timeoutMs)
{
    next_ = 0;
    acting_ = false;
    timedOut_ = false;
    timeoutMs_ = timeoutMs;
    clock_.start();
    QTimer ticker;
    ticker.setInterval(2);
    QObject::connect(&ticker, &QTimer::timeout, [this] { Tick(); });
    ticker.start();
    struct StopTicker {
        QTimer& timer;
        ~StopTicker() { timer.stop(); }
    } stop{ticker};
    body();
    ticker.stop();
    // A file the body wrote at its very end, with no tick after it, is taken
    // as the opponent would take it.
    if (autoConsume)
        ConsumeOwnFiles();
    // Steps whose moment came right at the end.
    if (next_ < steps_.size() && !acting_ && steps_[next_].Ready())
        Tick();
    EXPECT_EQ(next_, steps_.size()) << "the body ended before step \""
                                    << (next_ < steps_.size() ? steps_[next_].Name : std::string()) << "\"";
    steps_.clear();
    next_ = 0;
    everyTick = nullptr;
}

void GameplayTest::ConsumeOwnFiles()
{
    for (const char* extension : {".wrp", ".act", ".eot", ".ryc", ".ray", ".pna", ".pnc", ".ask", ".ans"})
        if (FileExists(OwnPath(extension))) {
            const QByteArray raw = Text(OwnPath(extension));
            consumed.push_back(Sent{QString::fromLatin1(extension), Consume(OwnPath(extension)), raw});
        }
}

void GameplayTest::Tick()
{
    if (!timedOut_ && clock_.elapsed() > timeoutMs_) {
        timedOut_ = true;
        ADD_FAILURE() << "the body still runs after " << timeoutMs_ << " ms, waiting for \""
                      << Waiting().toStdString() << "\" at phase " << V().GamePhase << ", before step \""
                      << (next_ < steps_.size() ? steps_[next_].Name : std::string("(none)")) << "\"";
        V().GameRunning = false;
        if (!V().LastSentFile.isEmpty())
            QFile::remove(V().LastSentFile);
        V().ClickTimerFired = true;
        return;
    }
    if (everyTick)
        everyTick();
    if (autoConsume)
        ConsumeOwnFiles();
    if (acting_ || next_ >= steps_.size() || !steps_[next_].Ready())
        return;
    acting_ = true;
    const std::size_t step = next_++;
    try {
        steps_[step].Act();
    } catch (const std::exception& error) {
        ADD_FAILURE() << "step \"" << steps_[step].Name << "\" threw: " << error.what();
    }
    acting_ = false;
}

void GameplayTest::DoubleClick(ImageControl* vehicle)
{
    // A wide window for the second click, so that a busy machine doesn't
    // turn the double click into two slow ones.
    window->VehDblClickTimer->SetInterval(kDoubleClickWindowMs);
    QTimer::singleShot(0, vehicle, [vehicle] { vehicle->Mouse.DblClick(); });
    vehicle->Mouse.Click();
}

void GameplayTest::SlowClick(ImageControl* vehicle)
{
    window->VehDblClickTimer->SetInterval(kSlowClickWindowMs);
    vehicle->Mouse.Click();
}

void GameplayTest::DoubleClickField(int field)
{
    const TwipPoint at = HitCentre(View(), field);
    ASSERT_EQ(FieldAt(at.X, at.Y, View()), field) << "the centre of field " << field << " in view " << View().BoardSide;
    window->Speelveld->Mouse.MouseDown(1, at.X, at.Y);
    window->Speelveld->Mouse.DblClick();
}

namespace {
std::filesystem::path OnDisk(const QString& path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}
} // namespace

void GameplayTest::SendTheirRoll(int d1, int d2)
{
    ASSERT_TRUE(WriteRollRecord(OnDisk(TheirPath(".wrp")), d1, d2));
}

void GameplayTest::SendTheirAction(const ActionMessage& message, int phase)
{
    ASSERT_TRUE(WriteActionRecord(OnDisk(TheirPath(".act")), message, phase));
}

void GameplayTest::SendTheirEndOfTurn(int turn)
{
    ASSERT_TRUE(WriteEndOfTurnRecord(OnDisk(TheirPath(".eot")), turn));
}

std::string GameplayTest::GameDifference(const BoardState& a, const BoardState& b)
{
    std::string out;
    const auto note = [&out](const std::string& what) { out += what + "; "; };
    for (int field = kFirstRoadField; field <= kLastRoadField; ++field)
        if (a.BoardCell(field) != b.BoardCell(field))
            note("BoardCell(" + std::to_string(field) + ") " + std::to_string(a.BoardCell(field)) + " / " +
                 std::to_string(b.BoardCell(field)));
    for (int side = 1; side <= 2; ++side) {
        const std::string army = std::to_string(side);
        for (int slot = 0; slot < kVehicleSlots; ++slot)
            if (a.VehiclePos(side, slot) != b.VehiclePos(side, slot) ||
                a.VehicleDir(side, slot) != b.VehicleDir(side, slot) ||
                a.VehicleCompanies(side, slot) != b.VehicleCompanies(side, slot) ||
                a.VehicleTag(side, slot) != b.VehicleTag(side, slot))
                note("vehicle " + army + "/" + std::to_string(slot) + ": " + a.VehicleTag(side, slot) + " at " +
                     std::to_string(a.VehiclePos(side, slot)) + " with " +
                     std::to_string(a.VehicleCompanies(side, slot)) + " / " + b.VehicleTag(side, slot) + " at " +
                     std::to_string(b.VehiclePos(side, slot)) + " with " +
                     std::to_string(b.VehicleCompanies(side, slot)));
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            if (a.MinePos(side, mine) != b.MinePos(side, mine))
                note("mine " + army + "/" + std::to_string(mine) + " " + std::to_string(a.MinePos(side, mine)) +
                     " / " + std::to_string(b.MinePos(side, mine)));
        if (a.HQCount(side) != b.HQCount(side))
            note("HQCount(" + army + ")");
        for (int place = 0; place < kHQPlaces; ++place)
            if (a.HQPlaceFree(side, place) != b.HQPlaceFree(side, place))
                note("HQPlaceFree(" + army + ", " + std::to_string(place) + ")");
        if (a.ReserveCompanies(side) != b.ReserveCompanies(side) || a.CampCompanies(side) != b.CampCompanies(side) ||
            a.PrisonCompanies(side) != b.PrisonCompanies(side))
            note("companies of army " + army);
        if (a.FlagReserve(side) != b.FlagReserve(side) || a.FlagCarried(side) != b.FlagCarried(side) ||
            a.FlagHome(side) != b.FlagHome(side))
            note("flags of army " + army);
    }
    return out;
}

Keys GameplayTest::Consume(const QString& path)
{
    const Keys keys = ReadKeys(path);
    QFile::remove(path);
    return keys;
}

Keys GameplayTest::ReadKeys(const QString& path)
{
    Keys keys;
    for (const QByteArray& raw : Text(path).split('\n')) {
        const QString line = QString::fromLatin1(raw).trimmed();
        const int equals = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('[')) || equals < 0)
            continue;
        keys.insert(line.left(equals), line.mid(equals + 1));
    }
    return keys;
}

void GameplayTest::Put(const QString& path, const QByteArray& text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
}

void GameplayTest::Publish(const QString& path, const QByteArray& text)
{
    const QString hidden = QFileInfo(path).path() + QStringLiteral("/.publishing");
    Put(hidden, text);
    std::filesystem::rename(QFile::encodeName(hidden).toStdString(), QFile::encodeName(path).toStdString());
}

QByteArray GameplayTest::Text(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList GameplayTest::LogLines() const
{
    QStringList lines;
    for (const QString& line : QString::fromLatin1(Text(scratch.path() + QStringLiteral("/Valkenhorn.log")))
                                   .split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        QString text = line.trimmed();
        const int at = text.lastIndexOf(QStringLiteral(" at "));
        if (at >= 0)
            text = text.left(at + 4);
        lines << text;
    }
    return lines;
}

PlacedBox GameplayTest::Seen(int x, int y, int w, int h) const
{
    if (window->V.Board.BoardSide == 2)
        return PlacedBox{kBoardWidth - (x + w), kBoardHeight - (y + h), w, h};
    return PlacedBox{x, y, w, h};
}

} // namespace vk::test

// The waits of the game run at a twentieth of their length: ctest sets the
// scale, and a run by hand gets the same unless it sets its own. The scale is
// read once, at the first wait, so it is set before any test runs. The window
// never needs a display.
int main(int argc, char** argv)
{
    setenv("VALKENHORN_TIME_SCALE", "0.05", 0);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    unsetenv("VALKENHORN_DICE");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

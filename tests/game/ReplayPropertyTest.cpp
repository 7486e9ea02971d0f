// Long random games played by two copies, as the players do: the sender's
// copy through the clicks of the board (vehicle pick, camp loading, cancel,
// destination with its questions), each action written as an .act record and
// read back, the receiver's copy through the replay. After every action the
// two positions must be the same, except where the rules let them part:
//   - a camp vehicle sent to its HQ with a 6 keeps the tag of its loading on
//     the sender, and takes the heading of the HQ on the receiver;
//   - the jeep leaving its island: the sender loaded it (the companies
//     overwritten at each choice), the receiver takes up to three prisoners
//     aboard, added to what it carried;
//   - a flag loaded by the second action of a turn travels as a plain move.
// There the receiver must hold exactly what those rules give, and then takes
// the sender's position again.

#include "ReplayPlayer.h"
#include "TwoCopies.h"
#include "game/ActionReplay.h"
#include "game/PhaseTable.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <iostream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using namespace vk;
using vk::test::GameDifference;
using vk::test::OwnLossesInStock;
using vk::test::Resync;
using vk::test::Sent;
using vk::test::TextSeenBy;

// The records of thousands of actions go through a folder in memory where
// there is one: each key is published by a rename, and on a disk that costs.
class ReplayProperty : public ::testing::Test {
protected:
    void SetUp() override
    {
        const fs::path shm = "/dev/shm";
        const fs::path base = fs::is_directory(shm) ? shm : fs::temp_directory_path();
        folder = base / ("vk_game_replay_" + std::to_string(::getpid()));
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }
    fs::path folder;
};

// How often each place where the copies part was met.
struct Tally {
    int actions = 0;
    int shots = 0;
    int fromCamp = 0;
    int campTagAtHQ = 0;
    int jeepAboard = 0;
    int flagUntold = 0;
    int flagTold = 0;
    int flagLoadStanding = 0; // the receiver's FlagLoad set before a replay
};

// The receiver's position the rules give after the replay of `m`: the
// sender's, but for the places where the copies part.
BoardState ExpectedAtReceiver(const BoardState& receiverBefore, const BoardState& sender, const ActionMessage& m,
                              int side, const Sent& sent, bool receiverFlagLoad, Tally& tally)
{
    BoardState expected = sender;
    if (m.From == CampField(side) && m.To == HQField(side)) {
        std::string& tag = expected.VehicleTag(side, m.Veh);
        const std::string atHQ = tag.substr(0, tag.size() - 1) + HeadingLetter(side == 1 ? kEast : kWest);
        tally.campTagAtHQ += atHQ != tag ? 1 : 0;
        tag = atHQ;
    }
    if (m.From == IslandField(side)) {
        const int prison = receiverBefore.PrisonCompanies(side);
        const int taken = std::min(3, prison);
        const int aboard = receiverBefore.VehicleCompanies(side, kJeepSlot) + taken;
        tally.jeepAboard += aboard != sent.JeepAboard ? 1 : 0;
        expected.PrisonCompanies(side) = prison - taken;
        if (m.To == CampField(side)) {
            expected.CampCompanies(side) += aboard - sent.JeepAboard;
        } else {
            expected.VehicleCompanies(side, kJeepSlot) = aboard;
            std::string& tag = expected.VehicleTag(side, kJeepSlot);
            tag = SetTagCompanies(tag, kJeepSlot, aboard);
        }
    }
    if (sent.FlagUntold && !receiverFlagLoad) {
        ++tally.flagUntold;
        expected.FlagReserve(side) += 1;
        if (expected.VehiclePos(side, m.Veh) == CampField(side)) {
            expected.FlagHome(side) -= 1;
        } else {
            expected.FlagCarried(side) -= 1;
            expected.VehicleTag(side, m.Veh)[15] = '0';
        }
    }
    return expected;
}

// The keys as the file holds them: DIRECT first, VEH before DICE in the
// record of phase 8 only, VEHTAG last.
void ExpectKeyOrder(const std::string& text, int phase)
{
    const auto dice = text.find("\r\nDICE=");
    const auto veh = text.find("\r\nVEH=");
    const auto tag = text.find("\r\nVEHTAG=");
    ASSERT_EQ(text.rfind("[GENERAL]\r\nDIRECT=", 0), 0u) << text;
    ASSERT_NE(dice, std::string::npos);
    ASSERT_NE(veh, std::string::npos);
    if (phase == 8)
        EXPECT_LT(veh, dice) << text;
    else
        EXPECT_LT(dice, veh) << "phase " << phase << ": " << text;
    ASSERT_NE(tag, std::string::npos);
    EXPECT_EQ(text.find("\r\n", tag + 2), text.size() - 2) << text;
}

std::string FileText(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The record of the action goes through a file: written by the sender, read
// back by the receiver.
ActionMessage ThroughTheFile(const fs::path& path, const ActionMessage& message, int phase)
{
    EXPECT_TRUE(WriteActionRecord(path, message, phase));
    ExpectKeyOrder(FileText(path), phase);
    const ActionMessage read = ReadActionRecord(path);
    EXPECT_EQ(read, message);
    fs::remove(path);
    return read;
}

struct Game {
    std::array<BoardState, 2> copies;
    vk::test::Dice rng;
    Tally tally;
    explicit Game(unsigned seed) : rng(seed)
    {
        for (int side = 1; side <= 2; ++side) {
            copies[side - 1].LocalSide = side;
            ResetNewGame(copies[side - 1]);
        }
    }
};

// One action of the sender and its replay on the receiver; false when the
// sender found nothing to do with the die of `pickPhase`, or when the copies
// parted where they may not.
bool ActionAndReplay(Game& game, ActionRecord& record, int side, int pickPhase, int dice1, int dice2,
                     const fs::path& file, int& donePhase)
{
    BoardState& sender = game.copies[side - 1];
    BoardState& receiver = game.copies[2 - side];
    const BoardState receiverBefore = receiver;
    Sent sent;
    vk::test::PlayAction(sender, record, side, pickPhase, dice1, dice2, game.rng, sent);
    if (!sent.Done)
        return false;
    const ActionMessage m = ThroughTheFile(file, sent.Message, sent.Phase);
    const bool receiverFlagLoad = receiver.Verdict.FlagLoad;
    PrepareReplayedVehicle(receiver, m, side);
    ReplayAction(receiver, m, side);

    Tally& tally = game.tally;
    ++tally.actions;
    tally.shots += m.Act == kActShot ? 1 : 0;
    tally.fromCamp += m.From == CampField(side) ? 1 : 0;
    tally.flagTold += m.Act == kActMoveLoadFlag ? 1 : 0;
    tally.flagLoadStanding += receiverFlagLoad ? 1 : 0;
    const BoardState expected = ExpectedAtReceiver(receiverBefore, sender, m, side, sent, receiverFlagLoad, tally);
    const std::string difference = GameDifference(expected, receiver);
    EXPECT_EQ(difference, "") << "action " << tally.actions << " of side " << side << " at phase " << sent.Phase
                              << ": " << vk::test::Describe(m);
    EXPECT_EQ(TextSeenBy(expected, side), TextSeenBy(receiver, side));
    EXPECT_TRUE(OwnLossesInStock(sender));
    EXPECT_TRUE(OwnLossesInStock(receiver));
    // A replayed move earns the receiver no compass card.
    EXPECT_EQ(receiver.PendingDraws, receiverBefore.PendingDraws);
    Resync(receiver, sender);
    donePhase = FindActionPhase(sent.Phase)->DoneValue;
    return difference.empty();
}

// A turn of `side`: the roll, a die chosen (or both), one or two actions.
bool PlayTurn(Game& game, int side, const fs::path& file)
{
    vk::test::Dice& rng = game.rng;
    for (BoardState& copy : game.copies)
        copy.PendingDraws = 0;
    const int dice1 = rng(1, 6);
    const int dice2 = rng(1, 6);
    ActionRecord record;
    EXPECT_EQ(NextPhase(PhaseEvent::Gooi, 0), 4);
    const PhaseEvent choice = std::array{PhaseEvent::Dice1, PhaseEvent::Dice2, PhaseEvent::BothDice}[rng(0, 2)];
    int pickPhase = NextPhase(choice, 4);
    for (int action = 0; action < 2; ++action) {
        int done = -1;
        if (!ActionAndReplay(game, record, side, pickPhase, dice1, dice2, file, done))
            return !::testing::Test::HasFailure();
        if (done == 27)
            break;
        ClearSecondAction(record);
        pickPhase = done == 9 ? NextPhase(PhaseEvent::Dice2, 9) : NextPhase(PhaseEvent::Dice1, 18);
    }
    return true;
}

TEST_F(ReplayProperty, ReceiverFollowsTheSenderActionByAction)
{
    Tally total;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        Game game(seed);
        for (int turn = 0; turn < 200; ++turn)
            ASSERT_TRUE(PlayTurn(game, 1 + turn % 2, folder / "Piet.act")) << "seed " << seed << " turn " << turn;
        total.actions += game.tally.actions;
        total.shots += game.tally.shots;
        total.fromCamp += game.tally.fromCamp;
        total.campTagAtHQ += game.tally.campTagAtHQ;
        total.jeepAboard += game.tally.jeepAboard;
        total.flagUntold += game.tally.flagUntold;
        total.flagTold += game.tally.flagTold;
        total.flagLoadStanding += game.tally.flagLoadStanding;
    }
    std::cout << "actions " << total.actions << ", shots " << total.shots << ", from camp " << total.fromCamp
              << ", camp tags at HQ " << total.campTagAtHQ << ", jeeps " << total.jeepAboard << ", flags told "
              << total.flagTold << ", untold " << total.flagUntold << ", receiver's FlagLoad standing "
              << total.flagLoadStanding << "\n";
    EXPECT_GT(total.actions, 2000);
    EXPECT_GT(total.shots, 50);
    EXPECT_GT(total.campTagAtHQ, 0);
    EXPECT_GT(total.jeepAboard, 0);
    EXPECT_GT(total.flagTold, 0);
    EXPECT_GT(total.flagUntold, 0);
}

} // namespace

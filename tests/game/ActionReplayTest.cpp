// The replay of the opponent's action record: the start of the vehicle as
// recorded, the target of a shot, the intercepted shot, the verdict fields
// the replay sets and leaves, and the places where the two copies part.

#include "game/ActionReplay.h"

#include "TempFolder.h"
#include "board/Movement.h"
#include "board/Picking.h"
#include "link/MessageKinds.h"
#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

namespace {

using namespace vk;

BoardState NewGame(int localSide)
{
    BoardState state;
    state.LocalSide = localSide;
    ResetNewGame(state);
    return state;
}

// Puts a vehicle on a road square with companies from the camp.
void OnRoad(BoardState& state, int side, int slot, int field, int companies, int heading = kEast)
{
    state.CampCompanies(side) -= companies;
    state.VehicleCompanies(side, slot) = companies;
    state.VehiclePos(side, slot) = field;
    state.VehicleDir(side, slot) = heading;
    state.VehicleTag(side, slot) = MakeVehicleTag(slot, side, companies, 0, heading);
    state.BoardCell(field) = side == 1 ? slot + 1 : -(slot + 1);
}

ActionMessage Message(int veh, int act, int from, int to, const std::string& tag, int direct = kEast, int dice = 1)
{
    ActionMessage m;
    m.Direct = direct;
    m.Dice = dice;
    m.Veh = veh;
    m.Act = act;
    m.From = from;
    m.To = to;
    m.VehTag = tag;
    return m;
}

TEST(ReplayedAction, ShotTargetIsTheVehicleOnTo)
{
    BoardState state = NewGame(2);
    OnRoad(state, 1, 0, 20, 2);
    OnRoad(state, 2, 4, 21, 1, kWest);
    const BoardAction byArmyOne = ReplayedAction(state, Message(0, kActShot, 20, 21, "tank_1_2_o"), 1);
    EXPECT_EQ(byArmyOne, (BoardAction{1, 0, 2, 20, 21, kEast, false, 4}));
    const BoardAction byArmyTwo = ReplayedAction(state, Message(4, kActShot, 21, 20, "x", kWest), 2);
    EXPECT_EQ(byArmyTwo.TargetSlot, 0);
    // An empty cell gives -1, and the shot then ends the run as a subscript fault.
    const ActionMessage astray = Message(0, kActShot, 20, 40, "tank_1_2_o");
    EXPECT_EQ(ReplayedAction(state, astray, 1).TargetSlot, -1);
    EXPECT_THROW(ReplayAction(state, astray, 1), RunTimeFault);
}

TEST(ReplayedAction, MoveCarriesHeadingAndMineLeft)
{
    const BoardState state = NewGame(1);
    EXPECT_EQ(ReplayedAction(state, Message(6, kActMoveLeaveMine, 7, 6, "commando_2_1_0_n", kNorth), 2),
              (BoardAction{2, 6, 3, 7, 6, kNorth, true, -1}));
    for (int act : {kActMove, kActMovePickUpMine, kActMoveLoadFlag, kActInterceptedShot}) {
        const BoardAction action = ReplayedAction(state, Message(3, act, 7, 6, "t", kSouth), 2);
        EXPECT_FALSE(action.LeaveMine) << act;
        EXPECT_EQ(action.TargetSlot, -1) << act;
        EXPECT_EQ(action.Heading, kSouth);
    }
}

TEST(InterceptedShot, NeitherPreparesNorApplies)
{
    BoardState state = NewGame(2);
    state.CampCompanies(1) -= 3;
    state.PrisonCompanies(1) = 3;
    const BoardState before = state;
    // From the camp or the island, the notice of a spent die touches nothing.
    for (int from : {113, 115, 20}) {
        const ActionMessage notice = Message(from == 115 ? 10 : 6, kActInterceptedShot, from, 40, "commando_1_2_1_o");
        PrepareReplayedVehicle(state, notice, 1);
        EXPECT_EQ(state, before) << from;
        EXPECT_EQ(ApplyAction(state, ReplayedAction(state, notice, 1)), ShotResult::Captured);
        BoardState expected = before;
        expected.Verdict.Heading = kEast;
        EXPECT_EQ(state, expected) << from;
        state = before;
    }
}

TEST(PrepareReplayedVehicle, CampVehicleTakesWhatItsTagTells)
{
    BoardState state = NewGame(2);
    PrepareReplayedVehicle(state, Message(7, kActMove, 113, 114, "commando_1_2_1_o"), 1);
    EXPECT_EQ(state.VehicleCompanies(1, 7), 2);
    EXPECT_EQ(state.CampCompanies(1), 13);
    EXPECT_EQ(state.MinePos(1, 0), -7);
    EXPECT_FALSE(state.MinePicture(1, 0).Visible);
    EXPECT_EQ(state.VehicleTag(1, 7), "commando_1_2_1_o");
    // A vehicle from its field is left as it stands.
    BoardState road = NewGame(2);
    OnRoad(road, 1, 0, 20, 2);
    const BoardState before = road;
    PrepareReplayedVehicle(road, Message(0, kActMove, 20, 21, "tank_1_2_o"), 1);
    EXPECT_EQ(road, before);
}

TEST(CampToHQ, EmptyInfantryOfArmyTwoFacesWestOnlyOnTheReceiver)
{
    BoardState sender = NewGame(2);
    BoardState receiver = NewGame(1);
    ASSERT_TRUE(SendCampVehicleToHQ(sender, 2, 4));
    const ActionMessage m = Message(4, kActMove, 116, 117, sender.VehicleTag(2, 4), sender.Verdict.Heading);
    PrepareReplayedVehicle(receiver, m, 2);
    ReplayAction(receiver, m, 2);
    EXPECT_EQ(sender.VehicleTag(2, 4), "infanterie_2_0_0_o");
    EXPECT_EQ(receiver.VehicleTag(2, 4), "infanterie_2_0_0_w");
    EXPECT_EQ(receiver.VehiclePos(2, 4), 117);
    EXPECT_EQ(receiver.VehicleDir(2, 4), sender.VehicleDir(2, 4));
    EXPECT_EQ(receiver.VehiclePicture(2, 4), sender.VehiclePicture(2, 4));
    EXPECT_EQ(receiver.HQCount(2), 1);
}

TEST(CampToHQ, LoadedVehicleHasTheSameTagOnBothCopies)
{
    BoardState sender = NewGame(2);
    BoardState receiver = NewGame(1);
    CampLoadClicks(sender, 2, 8, 2);
    ASSERT_TRUE(SendCampVehicleToHQ(sender, 2, 8));
    const ActionMessage m = Message(8, kActMove, 116, 117, sender.VehicleTag(2, 8), kWest);
    PrepareReplayedVehicle(receiver, m, 2);
    ReplayAction(receiver, m, 2);
    EXPECT_EQ(receiver.VehicleTag(2, 8), "genie_2_2_0_w");
    EXPECT_EQ(receiver.VehicleTag(2, 8), sender.VehicleTag(2, 8));
    EXPECT_EQ(receiver.CampCompanies(2), sender.CampCompanies(2));
}

TEST(JeepChosenAgain, SenderOverwritesReceiverAdds)
{
    // Both copies: the jeep of army 2 back on its island with 2 aboard, 2 in prison.
    BoardState start = NewGame(1);
    start.CampCompanies(2) -= 4;
    start.VehicleCompanies(2, kJeepSlot) = 2;
    start.VehicleTag(2, kJeepSlot) = "jeep_2_2_o";
    start.PrisonCompanies(2) = 2;
    BoardState sender = start;
    sender.LocalSide = 2;
    BoardState receiver = start;
    ASSERT_EQ(PickOwnVehicle(sender, 2, kJeepSlot, 5, 1, 2, {-1, -1}, {-1, -1}), VehiclePick::FromField);
    EXPECT_EQ(sender.VehicleTag(2, kJeepSlot), "jeep_2_2_o");
    EXPECT_EQ(sender.PrisonCompanies(2), 0);
    EXPECT_EQ(sender.CompanySum(2), 23);

    PrepareReplayedVehicle(receiver, Message(kJeepSlot, kActMove, 118, 112, "jeep_2_2_n"), 2);
    EXPECT_EQ(receiver.VehicleCompanies(2, kJeepSlot), 4);
    EXPECT_EQ(receiver.VehicleTag(2, kJeepSlot), "jeep_2_4_o");
    EXPECT_EQ(receiver.PrisonCompanies(2), 0);
    EXPECT_EQ(receiver.CompanySum(2), 25);
}

TEST(ReplayAction, MinePickupLeftByTheReceiversTurnIsCleared)
{
    BoardState state = NewGame(1);
    state.Verdict.MinePickup = true;
    OnRoad(state, 2, 8, 21, 1, kWest);
    ReplayAction(state, Message(8, kActMove, 21, 20, "genie_2_1_0_w", kWest), 2);
    EXPECT_EQ(state.VehicleTag(2, 8), "genie_2_1_0_w");
    EXPECT_FALSE(state.Verdict.MinePickup);
}

// A crossing left standing by the receiver's own judge (a move refused for
// want of fuel) is counted on the opponent's replayed move, as the turn's
// count always was (the next turn start clears it), but owes the receiver no
// card: the opponent's crossings are his to draw for, on his copy.
TEST(ReplayAction, ACrossingLeftStandingOwesTheReceiverNoCard)
{
    BoardState state = NewGame(2);
    state.Verdict.CompassCrossed = true;
    OnRoad(state, 1, 0, 60, 3, kEast);
    ReplayAction(state, Message(0, kActMove, 60, 61, "tank_1_3_o", kEast), 1);
    EXPECT_EQ(state.PendingDraws, 1);
    EXPECT_EQ(state.CompassOwed, 0);
    EXPECT_FALSE(state.Verdict.CompassCrossed);
}

TEST(ReplayAction, FlagOfCodeFiveIsLoaded)
{
    BoardState state = NewGame(2);
    OnRoad(state, 1, 4, 68, 2);
    ReplayAction(state, Message(4, kActMoveLoadFlag, 68, 69, "infanterie_1_2_1_n", kNorth), 1);
    EXPECT_EQ(TagMarkText(state.VehicleTag(1, 4), 4), "1");
    EXPECT_EQ(state.FlagCarried(1), 1);
    EXPECT_FALSE(state.Verdict.FlagLoad);
}

// A plain move over the flag field follows the receiver's own FlagLoad, as
// its own turn left it: the record of code 1 does not clear it.
TEST(ReplayAction, PlainMoveOverTheFlagFieldLoadsNoFlagWhateverStoodBefore)
{
    for (bool standing : {false, true}) {
        BoardState state = NewGame(2);
        OnRoad(state, 1, 4, 68, 2);
        state.Verdict.FlagLoad = standing;
        ReplayAction(state, Message(4, kActMove, 68, 69, "infanterie_1_2_1_n", kNorth), 1);
        EXPECT_EQ(state.FlagCarried(1), 0);
        EXPECT_EQ(TagMarkText(state.VehicleTag(1, 4), 4), "0");
    }
}

class RecordKeys : public vk::test::TempFolderTest {};

TEST_F(RecordKeys, VehBeforeDiceOnlyInTheRecordOfPhaseEight)
{
    for (int phase : {7, 8, 12, 13, 16, 17, 21, 22, 25, 26}) {
        const auto entry = FindActionPhase(phase);
        ASSERT_TRUE(entry.has_value());
        const auto path = folder / "Piet.act";
        const ActionMessage m = Message(3, kActMove, 20, 21, "infanterie_1_1_0_o", kEast, entry->DiceCode);
        ASSERT_TRUE(WriteActionRecord(path, m, phase));
        const std::string dice = "DICE=" + std::to_string(entry->DiceCode) + "\r\n";
        const std::string middle = phase == 8 ? "VEH=3\r\n" + dice : dice + "VEH=3\r\n";
        EXPECT_EQ(Get(path), "[GENERAL]\r\nDIRECT=1\r\n" + middle +
                                 "ACT=1\r\nFROM=20\r\nTO=21\r\nVEHTAG=infanterie_1_1_0_o\r\n")
            << "phase " << phase;
        EXPECT_EQ(ReadActionRecord(path), m);
        std::filesystem::remove(path);
    }
}

TEST(TossExtension, TwoDigitsOfTheTossNumberAfter99Comes00)
{
    EXPECT_EQ(TossExtension(1), ".d01");
    EXPECT_EQ(TossExtension(9), ".d09");
    EXPECT_EQ(TossExtension(10), ".d10");
    EXPECT_EQ(TossExtension(99), ".d99");
    EXPECT_EQ(TossExtension(100), ".d00");
    for (int n = 1; n <= 99; ++n) {
        const std::string text = std::to_string(n + 100);
        EXPECT_EQ(TossExtension(n), ".d" + text.substr(text.size() - 2)) << n;
    }
}

} // namespace

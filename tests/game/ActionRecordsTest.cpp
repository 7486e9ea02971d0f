#include "game/ActionRecords.h"

#include "TempFolder.h"
#include "board/BoardAction.h"
#include "game/ProfileValues.h"
#include "link/ProfileFile.h"
#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

namespace {

using vk::ActionLogLine;
using vk::ActionMessage;
using vk::ActionRecord;

class ActionRecords : public vk::test::TempFolderTest {};

const std::string kDashes(48, '-');

ActionRecord OneAction(int veh, int code, int from, int to)
{
    ActionRecord record;
    record.ActVeh[0] = veh;
    record.ActCode[0] = code;
    record.ActFrom[0] = from;
    record.ActTo[0] = to;
    return record;
}

TEST_F(ActionRecords, RollRecordHoldsD1ThenD2)
{
    const auto path = folder / "Piet.wrp";
    vk::WriteRollRecord(path, 4, 6);
    EXPECT_EQ(Get(path), "[GENERAL]\r\nD1=4\r\nD2=6\r\n");
    const auto roll = vk::ReadRollRecord(path);
    EXPECT_EQ(roll.D1, 4);
    EXPECT_EQ(roll.D2, 6);
}

TEST_F(ActionRecords, RollRecordWithoutD2ReadsMinusOne)
{
    const auto path = folder / "Piet.wrp";
    Put(path, "[GENERAL]\r\nD1=4\r\n");
    EXPECT_EQ(vk::ReadRollRecord(path).D2, -1);
}

TEST_F(ActionRecords, TurnEndedAtPhaseZeroOrThreeSendsOnlyTheEndOfTurn)
{
    // Phases 0 and 3 carry no action: no record belongs to them, only the .eot goes.
    EXPECT_FALSE(vk::FindActionPhase(0).has_value());
    EXPECT_FALSE(vk::FindActionPhase(3).has_value());
    const auto path = folder / "Piet.eot";
    vk::WriteEndOfTurnRecord(path, 7);
    EXPECT_EQ(Get(path), "[GENERAL]\r\nTURN=7\r\n");
    EXPECT_EQ(vk::ReadEndOfTurnRecord(path), 7);
}

TEST_F(ActionRecords, CancelledActionSendsNothing)
{
    // A cancel sets the phase back to 4, 9 or 18: none of them is the done
    // value of an action phase, so no record is written for it.
    for (int phase : {7, 8, 12, 13, 16, 17, 21, 22, 25, 26}) {
        const auto entry = vk::FindActionPhase(phase);
        ASSERT_TRUE(entry.has_value()) << phase;
        EXPECT_NE(entry->DoneValue, 4);
        EXPECT_TRUE(entry->DoneValue == 9 || entry->DoneValue == 18 || entry->DoneValue == 27);
    }
    for (int phase : {4, 5, 9, 10, 14, 18, 19, 23, 27})
        EXPECT_FALSE(vk::FindActionPhase(phase).has_value()) << phase;
}

TEST(ActionPhases, DieCodeRecordIndexAndCampBelongToThePhase)
{
    struct Row {
        int phase, done, dice, index;
        bool camp;
    };
    const Row rows[] = {
        {7, 9, 1, 0, true},    {8, 9, 1, 0, false},   {12, 27, 2, 1, true},  {13, 27, 2, 1, false},
        {16, 18, 2, 0, true},  {17, 18, 2, 0, false}, {21, 27, 1, 1, true},  {22, 27, 1, 1, false},
        {25, 27, 3, 0, true},  {26, 27, 3, 0, false},
    };
    for (const Row& row : rows) {
        const auto entry = vk::FindActionPhase(row.phase);
        ASSERT_TRUE(entry.has_value());
        EXPECT_EQ(entry->DoneValue, row.done) << row.phase;
        EXPECT_EQ(entry->DiceCode, row.dice) << row.phase;
        EXPECT_EQ(entry->RecordIndex, row.index) << row.phase;
        EXPECT_EQ(entry->FromCamp, row.camp) << row.phase;
    }
}

TEST_F(ActionRecords, KeysAreWrittenInOrderWithVehtagLast)
{
    const auto path = folder / "Piet.act";
    const auto message = vk::MakeActionMessage(OneAction(0, 1, 45, 50), 0, 2, 3, "tank_1_2_w");
    vk::WriteActionRecord(path, message, 17);
    EXPECT_EQ(Get(path),
              "[GENERAL]\r\nDIRECT=3\r\nDICE=2\r\nVEH=0\r\nACT=1\r\nFROM=45\r\nTO=50\r\nVEHTAG=tank_1_2_w\r\n");
}

TEST_F(ActionRecords, RecordOfPhaseEightWritesVehBeforeDice)
{
    const auto path = folder / "Piet.act";
    const auto message = vk::MakeActionMessage(OneAction(4, 1, 30, 33), 0, 1, 0, "infanterie_1_3_0_n");
    vk::WriteActionRecord(path, message, 8);
    EXPECT_EQ(Get(path), "[GENERAL]\r\nDIRECT=0\r\nVEH=4\r\nDICE=1\r\nACT=1\r\nFROM=30\r\nTO=33\r\n"
                         "VEHTAG=infanterie_1_3_0_n\r\n");
}

TEST_F(ActionRecords, ShotHasFromAndToLikeAMoveOnlyActDiffers)
{
    const auto path = folder / "Piet.act";
    const auto message = vk::MakeActionMessage(OneAction(1, 2, 40, 43), 0, 3, 1, "kanon_1_4_o");
    vk::WriteActionRecord(path, message, 26);
    EXPECT_EQ(Get(path),
              "[GENERAL]\r\nDIRECT=1\r\nDICE=3\r\nVEH=1\r\nACT=2\r\nFROM=40\r\nTO=43\r\nVEHTAG=kanon_1_4_o\r\n");
    const ActionMessage read = vk::ReadActionRecord(path);
    EXPECT_EQ(read, message);
}

TEST_F(ActionRecords, SecondActionWithTheSameVehicleStartsWhereTheFirstEnded)
{
    ActionRecord record = OneAction(3, 1, 10, 14);
    record.ActVeh[1] = 3;
    record.ActCode[1] = 1;
    record.ActFrom[1] = 14;
    record.ActTo[1] = 17;
    const auto first = vk::MakeActionMessage(record, 0, 1, 1, "infanterie_1_1_0_o");
    const auto second = vk::MakeActionMessage(record, 1, 2, 1, "infanterie_1_1_0_o");
    EXPECT_EQ(first.Veh, second.Veh);
    EXPECT_EQ(second.From, first.To);
    EXPECT_EQ(second.To, 17);
    EXPECT_EQ(second.Dice, 2);
    // Two records, each in the same file once the first was consumed.
    const auto path = folder / "Piet.act";
    vk::WriteActionRecord(path, first, 8);
    EXPECT_EQ(vk::ReadActionRecord(path), first);
    std::filesystem::remove(path);
    vk::WriteActionRecord(path, second, 13);
    EXPECT_EQ(vk::ReadActionRecord(path), second);
}

TEST_F(ActionRecords, JeepLeavingPrisonIslandCarriesNoCompanyCount)
{
    const auto path = folder / "Piet.act";
    const auto message = vk::MakeActionMessage(OneAction(10, 1, 115, 112), 0, 1, 3, "jeep_1_2_w");
    vk::WriteActionRecord(path, message, 8);
    EXPECT_EQ(Get(path),
              "[GENERAL]\r\nDIRECT=3\r\nVEH=10\r\nDICE=1\r\nACT=1\r\nFROM=115\r\nTO=112\r\nVEHTAG=jeep_1_2_w\r\n");
    EXPECT_EQ(vk::ReadActionRecord(path).From, 115);
}

TEST(CampVehicleTag, EmptyVehicleFromTheCampReadsZeroCompanies)
{
    EXPECT_EQ(vk::ReadCampVehicleTag(0, "tank_1_0_o").Companies, 0);
    EXPECT_EQ(vk::ReadCampVehicleTag(6, "commando_2_0_0_w").Companies, 0);
    EXPECT_FALSE(vk::ReadCampVehicleTag(6, "commando_2_0_0_w").MineAboard);
}

TEST(CampVehicleTag, CompaniesDigitStandsWhereTheTypeWordPutsIt)
{
    EXPECT_EQ(vk::ReadCampVehicleTag(0, "tank_1_3_o").Companies, 3);          // position 8
    EXPECT_EQ(vk::ReadCampVehicleTag(1, "kanon_2_4_w").Companies, 4);         // position 9
    EXPECT_EQ(vk::ReadCampVehicleTag(2, "kanon_1_2_o").Companies, 2);
    EXPECT_EQ(vk::ReadCampVehicleTag(3, "infanterie_1_2_1_o").Companies, 2);  // position 14
    EXPECT_EQ(vk::ReadCampVehicleTag(5, "infanterie_2_3_0_o").Companies, 3);
    EXPECT_EQ(vk::ReadCampVehicleTag(7, "commando_1_2_1_o").Companies, 2);    // position 12
    EXPECT_EQ(vk::ReadCampVehicleTag(8, "genie_1_2_0_o").Companies, 2);       // position 9
    EXPECT_EQ(vk::ReadCampVehicleTag(9, "genie_2_1_2_o").Companies, 1);
}

TEST(CampVehicleTag, CommandoWithOneAtPosition14HasAMineOnBoard)
{
    const auto load = vk::ReadCampVehicleTag(6, "commando_1_1_1_o");
    EXPECT_EQ(load.Companies, 1);
    EXPECT_TRUE(load.MineAboard);
    // A genie's mark is no mine to unload from the camp.
    EXPECT_FALSE(vk::ReadCampVehicleTag(8, "genie_1_1_1_o").MineAboard);
}

TEST(CampVehicleTag, ShortTagReadsZero)
{
    EXPECT_EQ(vk::ReadCampVehicleTag(3, "infanterie_1").Companies, 0);
    EXPECT_THROW(vk::ReadCampVehicleTag(11, "tank_1_0_o"), vk::RunTimeFault);
}

TEST(FlagCode, FlagLoadedByTheSecondActionIsNotToldToTheOpponent)
{
    ActionRecord record = OneAction(0, 1, 45, 50);
    record.ActVeh[1] = 4;
    record.ActCode[1] = 1;
    record.ActFrom[1] = 68;
    record.ActTo[1] = 69;
    vk::SetFlagLoadCode(record);
    EXPECT_EQ(record.ActCode[0], 5);
    EXPECT_EQ(record.ActCode[1], 1);
    const auto sent = vk::MakeActionMessage(record, 1, 2, 1, "infanterie_1_1_1_o");
    EXPECT_EQ(sent.Act, 1);
}

TEST(FlagCode, FlagLoadedByTheFirstActionTravelsAsCodeFive)
{
    ActionRecord record = OneAction(4, 1, 68, 69);
    vk::SetFlagLoadCode(record);
    EXPECT_EQ(vk::MakeActionMessage(record, 0, 1, 1, "infanterie_1_1_1_o").Act, 5);
}

TEST_F(ActionRecords, RecordWithoutItsCommitKeyIsNotComplete)
{
    const auto path = folder / "Piet.act";
    Put(path, "[GENERAL]\r\nDIRECT=1\r\nDICE=2\r\nVEH=0\r\n");
    const ActionMessage read = vk::ReadActionRecord(path);
    EXPECT_EQ(read.VehTag, "");
    EXPECT_EQ(read.Direct, 1);
    EXPECT_EQ(read.Act, -1);
    EXPECT_EQ(read.From, -1);
    EXPECT_EQ(read.To, -1);
}

TEST_F(ActionRecords, ReceiverStoresEveryRecordInTheFirstIndex)
{
    ActionRecord record;
    ActionMessage message;
    message.Veh = 7;
    message.Act = 3;
    message.From = 20;
    message.To = 21;
    vk::StoreReceivedAction(record, message);
    EXPECT_EQ(record.ActVeh[0], 7);
    EXPECT_EQ(record.ActCode[0], 3);
    EXPECT_EQ(record.ActFrom[0], 20);
    EXPECT_EQ(record.ActTo[0], 21);
    EXPECT_EQ(record.ActVeh[1], -1);
}

TEST_F(ActionRecords, ValueThatIsNoNumberIsATypeMismatch)
{
    const auto path = folder / "Piet.act";
    Put(path, "[GENERAL]\r\nDIRECT=x\r\nVEHTAG=tank_1_0_o\r\n");
    EXPECT_THROW(vk::ReadActionRecord(path), vk::ProfileValueError);
}

TEST(ActionRecordWords, ClearingSetsMinusOne)
{
    ActionRecord record = OneAction(1, 2, 3, 4);
    record.ActVeh[1] = 5;
    vk::ClearSecondAction(record);
    EXPECT_EQ(record.ActVeh[0], 1);
    EXPECT_EQ(record.ActVeh[1], -1);
    vk::ClearActionRecord(record);
    EXPECT_EQ(record, ActionRecord{});
    EXPECT_EQ(record.ActTo[0], -1);
}

std::vector<ActionLogLine> Expected(std::initializer_list<const char*> details)
{
    std::vector<ActionLogLine> lines;
    lines.push_back({kDashes, false});
    lines.push_back({"I take action with following details at ", true});
    for (const char* line : details)
        lines.push_back({line, false});
    lines.push_back({kDashes, false});
    return lines;
}

TEST(LogAction, MoveOfATankOnTheRoad)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(0, 1, 45, 50), 1, false),
              Expected({"using dice 1", "moving tank", "from 45", "to 50"}));
}

TEST(LogAction, CampVehicleToTheHQ)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(8, 1, 113, 114), 2, true),
              Expected({"using dice 2", "moving deminer", "from main camp", "to HQ"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(2, 1, 116, 117), 3, true),
              Expected({"using both dices", "moving canon", "from main camp", "to HQ"}));
}

TEST(LogAction, ShotNamesTheVehicleAtTheDestination)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(1, 2, 40, 43), 3, false),
              Expected({"using both dices", "shooting with canon", "from 40", "to vehicle at 43"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(5, 2, 40, 43), 1, false),
              Expected({"using dice 1", "shooting with infantry", "from 40", "to vehicle at 43"}));
}

TEST(LogAction, JeepNeverShoots)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(10, 2, 100, 101), 1, false),
              Expected({"using dice 1", "moving jeep", "from 100", "to vehicle at 101"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(10, 1, 100, 118), 2, false),
              Expected({"using dice 2", "moving jeep", "from 100", "to prison island"}));
}

TEST(LogAction, InterceptedShotAtTheJeep)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(0, 0, 60, 61), 2, false),
              Expected({"using dice 2", "attacking jeep, but was intercepted by opponent", "from 60", "to 61"}));
}

TEST(LogAction, MineLeftPickedUpAndFlagLoaded)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(6, 3, 20, 21), 1, false),
              Expected({"using dice 1", "moving commando", "from 20", "to 21", "leaves mine at 20"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(9, 4, 30, 31), 2, false),
              Expected({"using dice 2", "moving deminer", "from 30", "to 31", "to pick up mine"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(3, 5, 68, 69), 1, false),
              Expected({"using dice 1", "moving infantry", "from 68", "to RESERVE", "loading flag"}));
}

TEST(LogAction, DestinationsWithNames)
{
    EXPECT_EQ(vk::LogActionLines(OneAction(4, 1, 3, 2), 1, false),
              Expected({"using dice 1", "moving infantry", "from 3", "to RESERVE"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(0, 1, 97, 116), 1, false),
              Expected({"using dice 1", "moving tank", "from 97", "to main camp"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(7, 1, 97, 113), 1, false),
              Expected({"using dice 1", "moving commando", "from 97", "to main camp"}));
    EXPECT_EQ(vk::LogActionLines(OneAction(10, 1, 5, 115), 1, false),
              Expected({"using dice 1", "moving jeep", "from 5", "to prison island"}));
}

TEST(LogAction, SecondActionRepeatsTheFirstButForTheDie)
{
    ActionRecord record = OneAction(0, 1, 45, 50);
    record.ActVeh[1] = 1;
    record.ActCode[1] = 2;
    record.ActFrom[1] = 10;
    record.ActTo[1] = 12;
    EXPECT_EQ(vk::LogActionLines(record, 2, false),
              Expected({"using dice 2", "moving tank", "from 45", "to 50"}));
}

TEST(LogAction, SeparatorIs48Hyphens)
{
    const auto lines = vk::LogActionLines(OneAction(0, 1, 45, 50), 1, false);
    EXPECT_EQ(lines.front().Text, "------------------------------------------------");
    EXPECT_EQ(lines.back().Text.size(), 48u);
}

} // namespace

#include "game/SavedGame.h"

#include "TempFolder.h"
#include "board/BoardView.h"
#include "game/ProfileValues.h"
#include "link/ProfileFile.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace {

using vk::BoardState;
using vk::GameProgress;

class SavedGame : public vk::test::TempFolderTest {
protected:
    std::filesystem::path File() const { return vk::SavedGamePath(folder, "Jan"); }
};

BoardState Start(int localSide)
{
    BoardState state;
    state.LocalSide = localSide;
    vk::ResetNewGame(state);
    return state;
}

GameProgress DealtDeck(int externalSide)
{
    GameProgress progress;
    progress.ExternalSide = externalSide;
    progress.TurnNumber = 1;
    for (int i = 0; i < 32; ++i)
        progress.Deck.CompassStack[static_cast<std::size_t>(i)] = (i * 7) % 32 + 1;
    progress.Deck.StackPoint = 32;
    return progress;
}

// Every value the file holds set to 99 (tags "x"): what a read must overwrite.
void Scramble(BoardState& state, GameProgress& progress)
{
    state.LocalSide = 99;
    progress.ExternalSide = 99;
    progress.TurnNumber = 99;
    for (int side = 1; side <= 2; ++side) {
        state.Brandstof(side) = 99;
        state.Tsetse(side) = 99;
        for (int slot = 0; slot < vk::kVehicleSlots; ++slot) {
            state.VehiclePos(side, slot) = 99;
            state.VehicleCompanies(side, slot) = 99;
            state.VehicleDir(side, slot) = 99;
            state.VehicleTag(side, slot) = "x";
        }
        state.FlagReserve(side) = 99;
        state.FlagCarried(side) = 99;
        state.FlagHome(side) = 99;
        for (int mine = 0; mine < vk::kMinesPerArmy; ++mine)
            state.MinePos(side, mine) = 99;
        state.ReserveCompanies(side) = 99;
        state.CampCompanies(side) = 99;
        state.PrisonCompanies(side) = 99;
    }
    state.TsetseVeh = 99;
    progress.Deck.CompassStack.fill(99);
    progress.Deck.CompassStack[32] = 0; // the spare entry is not in the file
    progress.Deck.StackPoint = 99;
    progress.Deck.CardCount = {99, 99};
    progress.Deck.CardHand = {{{99, 99}, {99, 99}}};
}

TEST_F(SavedGame, StartingPositionIsWrittenKeyByKeyInItsOrder)
{
    const BoardState state = Start(1);
    const GameProgress progress = DealtDeck(2);
    ASSERT_TRUE(vk::SaveGame(File(), state, progress));

    // Typed from the starting position: army 1 in camp 113 heading o (jeep on
    // 115 heading w), army 2 in camp 116 with tank, kanon, commando w and the
    // rest o (jeep on 118).
    const int dir1[11] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 3};
    const int dir2[11] = {3, 3, 3, 1, 1, 1, 3, 3, 1, 1, 1};
    const char* tags1[11] = {"tank_1_0_o",         "kanon_1_0_o",        "kanon_1_0_o",
                             "infanterie_1_0_0_o", "infanterie_1_0_0_o", "infanterie_1_0_0_o",
                             "commando_1_0_0_o",   "commando_1_0_0_o",   "genie_1_0_0_o",
                             "genie_1_0_0_o",      "jeep_1_0_w"};
    const char* tags2[11] = {"tank_2_0_w",         "kanon_2_0_w",        "kanon_2_0_w",
                             "infanterie_2_0_0_o", "infanterie_2_0_0_o", "infanterie_2_0_0_o",
                             "commando_2_0_0_w",   "commando_2_0_0_w",   "genie_2_0_0_o",
                             "genie_2_0_0_o",      "jeep_2_0_o"};
    std::ostringstream want;
    const auto line = [&](const std::string& text) { want << text << "\r\n"; };
    const auto slots = [&](const char* section, auto value) {
        line(std::string("[") + section + "]");
        for (int n = 0; n <= 10; ++n)
            line("VEH" + std::string(n < 10 ? "0" : "") + std::to_string(n) + "=" + value(n));
    };
    line("[MAIN]");
    for (const char* text : {"LOK=1", "EXT=2", "BEURT=1", "BRANDSTOF1=0", "BRANDSTOF2=0", "TSETSE1=0", "TSETSE2=0",
                             "TSETSEVEH=0"})
        line(text);
    slots("VEHPOS_LOK", [](int n) { return std::string(n == 10 ? "115" : "113"); });
    slots("VEHPOS_EXT", [](int n) { return std::string(n == 10 ? "118" : "116"); });
    slots("CMPVEH_LOK", [](int) { return std::string("0"); });
    slots("CMPVEH_EXT", [](int) { return std::string("0"); });
    slots("DIRVEH_LOK", [&](int n) { return std::to_string(dir1[n]); });
    slots("DIRVEH_EXT", [&](int n) { return std::to_string(dir2[n]); });
    slots("VEHTAG_LOK", [&](int n) { return std::string(tags1[n]); });
    slots("VEHTAG_EXT", [&](int n) { return std::string(tags2[n]); });
    for (const char* section : {"[VLAG_LOK]", "[VLAG_EXT]"}) {
        line(section);
        line("RES=5");
        line("VEH=0");
        line("KMP=0");
    }
    line("[MIJN_GER]");
    for (int n = 0; n < 5; ++n)
        line("POS0" + std::to_string(n) + "=113");
    line("[MIJN_REB]");
    for (int n = 0; n < 5; ++n)
        line("POS0" + std::to_string(n) + "=116");
    for (const char* section : {"[KOMP_LOK]", "[KOMP_EXT]"}) {
        line(section);
        line("RES=10");
        line("KMP=15");
        line("PRS=0");
    }
    for (const char* section : {"[CARD_LOK]", "[CARD_EXT]"}) {
        line(section);
        line("CNT=0");
        line("CRD1=0");
        line("CRD2=0");
    }
    line("[STACK]");
    for (int i = 1; i <= 32; ++i)
        line("CARD" + std::string(i < 10 ? "0" : "") + std::to_string(i) + "=" + std::to_string(((i - 1) * 7) % 32 + 1));
    line("POINT=32");
    EXPECT_EQ(Get(File()), want.str());
}

TEST_F(SavedGame, KeysRunFromVeh00PosZeroAndCard01)
{
    BoardState state = Start(1);
    GameProgress progress = DealtDeck(2);
    progress.Deck.CompassStack[0] = 17;
    progress.Deck.CompassStack[31] = 4;
    vk::SaveGame(File(), state, progress);
    const std::string text = Get(File());
    EXPECT_NE(text.find("\r\nVEH00="), std::string::npos);
    EXPECT_NE(text.find("\r\nVEH10="), std::string::npos);
    EXPECT_EQ(text.find("VEH11="), std::string::npos);
    EXPECT_NE(text.find("\r\nPOS00="), std::string::npos);
    EXPECT_NE(text.find("\r\nPOS04="), std::string::npos);
    EXPECT_EQ(text.find("POS05="), std::string::npos);
    EXPECT_EQ(text.find("CARD00="), std::string::npos);
    EXPECT_EQ(text.find("CARD33="), std::string::npos);
    // The stack's entry 0 is CARD01.
    EXPECT_EQ(vk::ReadProfileString("STACK", "CARD01", "", File()), "17");
    EXPECT_EQ(vk::ReadProfileString("STACK", "CARD32", "", File()), "4");
}

TEST_F(SavedGame, SpentStackPlacesAreStoredAsZero)
{
    BoardState state = Start(1);
    GameProgress progress = DealtDeck(2);
    // Two Personnel cards kept: the pointer fell to 30 and left zeros above it.
    progress.Deck.CompassStack[30] = 0;
    progress.Deck.CompassStack[31] = 0;
    progress.Deck.StackPoint = 30;
    progress.Deck.CardCount[0] = 2;
    progress.Deck.CardHand[0] = {23, 30};
    vk::SaveGame(File(), state, progress);
    EXPECT_EQ(vk::ReadProfileString("STACK", "CARD31", "", File()), "0");
    EXPECT_EQ(vk::ReadProfileString("STACK", "CARD32", "", File()), "0");
    EXPECT_EQ(vk::ReadProfileString("STACK", "POINT", "", File()), "30");
    EXPECT_EQ(vk::ReadProfileString("CARD_LOK", "CRD2", "", File()), "30");

    BoardState readState = Start(1);
    GameProgress readProgress;
    vk::ReadSavedGame(File(), readState, readProgress);
    EXPECT_EQ(readProgress, progress);
}

TEST_F(SavedGame, OpponentWithAnotherNameFindsNoSavedGame)
{
    vk::SaveGame(File(), Start(1), DealtDeck(2));
    EXPECT_EQ(File(), folder / "Jan.vkh");
    EXPECT_TRUE(std::filesystem::exists(vk::SavedGamePath(folder, "Jan")));
    EXPECT_FALSE(std::filesystem::exists(vk::SavedGamePath(folder, "JanK")));
    // Reading it anyway finds no LOK: no side to store anything through.
    BoardState state = Start(1);
    GameProgress progress;
    EXPECT_THROW(vk::ReadSavedGame(vk::SavedGamePath(folder, "JanK"), state, progress), vk::SavedGameError);
}

TEST_F(SavedGame, ResumingWithTheOtherLocalSideThanTheTossWouldGive)
{
    // Saved by the player of the rebels: LOK 2. Read into a fresh game,
    // whose reset has BoardSide 1 and LocalSide 1.
    BoardState saved = Start(2);
    saved.VehiclePos(2, 0) = 97;
    saved.VehicleDir(2, 0) = 3;
    saved.VehicleCompanies(2, 0) = 4;
    saved.CampCompanies(2) = 11;
    saved.VehicleTag(2, 0) = "tank_2_4_w";
    GameProgress progress = DealtDeck(1);
    progress.TurnNumber = 6;
    vk::SaveGame(File(), saved, progress);
    EXPECT_EQ(vk::ReadProfileString("VEHPOS_LOK", "VEH00", "", File()), "97");
    EXPECT_EQ(vk::ReadProfileString("KOMP_LOK", "KMP", "", File()), "11");

    BoardState state = Start(1);
    GameProgress read;
    vk::ReadSavedGame(File(), state, read);
    EXPECT_EQ(state.LocalSide, 2);
    EXPECT_EQ(read.ExternalSide, 1);
    EXPECT_EQ(read.TurnNumber, 6);
    EXPECT_EQ(state.VehiclePos(2, 0), 97);
    EXPECT_EQ(state.VehicleTag(2, 0), "tank_2_4_w");
    EXPECT_EQ(state.CampCompanies(2), 11);
    EXPECT_EQ(state.CampCompanies(1), 15);
    vk::DrawBoardAfterLoad(state);
    EXPECT_EQ(state.BoardSide, 2); // LocalSide 2 differs from BoardSide 1: the rebels' view
    EXPECT_EQ(state.BoardCell(97), -1);
}

TEST_F(SavedGame, SaveDuringTheOpponentsTurnStoresTheBoardAsFarAsItCame)
{
    // The opponent (army 2) has made one action of two: its tank stands on
    // 97 with 3 companies; that half-played turn is what the file keeps.
    BoardState state = Start(1);
    state.VehiclePos(2, 0) = 97;
    state.VehicleDir(2, 0) = 3;
    state.VehicleCompanies(2, 0) = 3;
    state.CampCompanies(2) = 12;
    state.VehicleTag(2, 0) = "tank_2_3_w";
    state.BoardCell(97) = -1;
    GameProgress progress = DealtDeck(2);
    progress.TurnNumber = 4;
    vk::SaveGame(File(), state, progress);

    BoardState read = Start(1);
    GameProgress readProgress;
    vk::ReadSavedGame(File(), read, readProgress);
    vk::DrawBoardAfterLoad(read);
    EXPECT_EQ(read.VehiclePos(2, 0), 97);
    EXPECT_EQ(read.VehicleCompanies(2, 0), 3);
    EXPECT_EQ(read.CampCompanies(2), 12);
    EXPECT_EQ(read.BoardCell(97), -1);
    EXPECT_EQ(readProgress.TurnNumber, 4);
    EXPECT_EQ(read.CompanySum(2), 25);
}

TEST_F(SavedGame, TheTwoFilesOfOneGameDifferOnlyByTheRoles)
{
    BoardState state = Start(1);
    state.VehiclePos(1, 3) = 70;
    state.VehicleCompanies(1, 3) = 3;
    state.CampCompanies(1) = 12;
    state.PrisonCompanies(2) = 2;
    state.ReserveCompanies(2) = 8;
    state.FlagCarried(1) = 1;
    state.FlagReserve(1) = 4;
    GameProgress progress = DealtDeck(2);
    progress.Deck.CardCount = {1, 2};
    progress.Deck.CardHand = {{{25, 0}, {21, 32}}};

    const auto mine = folder / "Piet.vkh";
    const auto theirs = folder / "Jan.vkh";
    vk::SaveGame(mine, state, progress);
    BoardState other = state;
    other.LocalSide = 2;
    GameProgress otherProgress = progress;
    otherProgress.ExternalSide = 1;
    vk::SaveGame(theirs, other, otherProgress);

    const auto swapped = [](const std::string& section) {
        if (section.ends_with("_LOK"))
            return section.substr(0, section.size() - 4) + "_EXT";
        if (section.ends_with("_EXT"))
            return section.substr(0, section.size() - 4) + "_LOK";
        return section;
    };
    for (const std::string section : {"VEHPOS_LOK", "VEHPOS_EXT", "CMPVEH_LOK", "CMPVEH_EXT", "DIRVEH_LOK",
                                      "DIRVEH_EXT", "VEHTAG_LOK", "VEHTAG_EXT"})
        for (int n = 0; n <= 10; ++n) {
            const std::string key = vk::IndexedKey("VEH", n);
            EXPECT_EQ(vk::ReadProfileString(section, key, "?", mine),
                      vk::ReadProfileString(swapped(section), key, "?", theirs))
                << section << " " << key;
        }
    for (const std::string section : {"VLAG_LOK", "VLAG_EXT", "KOMP_LOK", "KOMP_EXT", "CARD_LOK", "CARD_EXT"})
        for (const char* key : {"RES", "VEH", "KMP", "PRS", "CNT", "CRD1", "CRD2"})
            EXPECT_EQ(vk::ReadProfileString(section, key, "?", mine),
                      vk::ReadProfileString(swapped(section), key, "?", theirs))
                << section << " " << key;
    EXPECT_EQ(vk::ReadProfileString("MAIN", "LOK", "", mine), "1");
    EXPECT_EQ(vk::ReadProfileString("MAIN", "LOK", "", theirs), "2");
    EXPECT_EQ(vk::ReadProfileString("MAIN", "EXT", "", theirs), "1");
    // Stored by army, the same in both files.
    for (const char* key : {"POS00", "POS04"}) {
        EXPECT_EQ(vk::ReadProfileString("MIJN_GER", key, "?", mine), vk::ReadProfileString("MIJN_GER", key, "?", theirs));
        EXPECT_EQ(vk::ReadProfileString("MIJN_REB", key, "?", mine), vk::ReadProfileString("MIJN_REB", key, "?", theirs));
    }
}

TEST_F(SavedGame, MissingKeyGivesMinusOneAndAnEmptyTag)
{
    Put(File(), "[MAIN]\r\nLOK=1\r\nEXT=2\r\n");
    BoardState state = Start(1);
    GameProgress progress;
    vk::ReadSavedGame(File(), state, progress);
    EXPECT_EQ(progress.TurnNumber, -1);
    EXPECT_EQ(state.VehiclePos(1, 0), -1);
    EXPECT_EQ(state.VehiclePos(2, 10), -1);
    EXPECT_EQ(state.VehicleTag(1, 4), "");
    EXPECT_EQ(state.MinePos(2, 4), -1);
    EXPECT_EQ(progress.Deck.CompassStack[31], -1);
    EXPECT_EQ(progress.Deck.StackPoint, -1);
}

TEST_F(SavedGame, LokIsReadFirstAndMustBeASide)
{
    Put(File(), "[MAIN]\r\nLOK=3\r\nEXT=2\r\n");
    BoardState state = Start(1);
    GameProgress progress;
    EXPECT_THROW(vk::ReadSavedGame(File(), state, progress), vk::SavedGameError);
    Put(File(), "[MAIN]\r\nLOK=one\r\nEXT=2\r\n");
    EXPECT_THROW(vk::ReadSavedGame(File(), state, progress), vk::ProfileValueError);
    Put(File(), "[MAIN]\r\nLOK=2\r\nEXT=2\r\n[KOMP_LOK]\r\nRES=40000\r\n");
    EXPECT_THROW(vk::ReadSavedGame(File(), state, progress), vk::ProfileValueError);
}

TEST_F(SavedGame, SaveLeavesNothingOfAnOldFile)
{
    Put(File(), "[OLD]\r\nX=1\r\n[MAIN]\r\nLOK=2\r\nSTRAY=5\r\n");
    vk::SaveGame(File(), Start(1), DealtDeck(2));
    const std::string text = Get(File());
    EXPECT_EQ(text.find("[OLD]"), std::string::npos);
    EXPECT_EQ(text.find("STRAY"), std::string::npos);
    EXPECT_EQ(text.rfind("[MAIN]\r\nLOK=1\r\n", 0), 0u);
}

TEST_F(SavedGame, LoadDeletesTheFile)
{
    vk::SaveGame(File(), Start(1), DealtDeck(2));
    BoardState state = Start(1);
    GameProgress progress;
    vk::LoadGame(File(), state, progress);
    EXPECT_FALSE(std::filesystem::exists(File()));
    EXPECT_EQ(progress.TurnNumber, 1);
}

TEST_F(SavedGame, BoardCellsAndHQPlacesAreRebuiltFromThePositions)
{
    BoardState saved = Start(1);
    saved.VehiclePos(1, 4) = 114;
    saved.VehiclePos(1, 2) = 114;
    saved.VehiclePos(1, 0) = 60;
    saved.VehicleDir(1, 0) = 2;
    saved.VehiclePos(2, 7) = 30;
    saved.VehiclePos(2, 1) = 117;
    saved.MinePos(1, 3) = 44;
    saved.MinePos(2, 0) = 12;
    saved.MinePos(2, 1) = -7; // loaded in its commando
    vk::SaveGame(File(), saved, DealtDeck(2));

    BoardState state = Start(1);
    GameProgress progress;
    vk::ReadSavedGame(File(), state, progress);
    vk::DrawBoardAfterLoad(state);
    EXPECT_EQ(state.BoardSide, 1);
    EXPECT_EQ(state.BoardCell(60), 1);
    EXPECT_EQ(state.BoardCell(30), -8);
    EXPECT_EQ(state.BoardCell(44), 12);
    EXPECT_EQ(state.BoardCell(12), -12);
    int filled = 0;
    for (int field = 1; field <= 112; ++field)
        filled += state.BoardCell(field) != 0 ? 1 : 0;
    EXPECT_EQ(filled, 4);
    EXPECT_EQ(state.HQCount(1), 2);
    EXPECT_EQ(state.HQCount(2), 1);
    // HQ places handed out in slot order: slot 2 first, then slot 4.
    EXPECT_FALSE(state.HQPlaceFree(1, 0));
    EXPECT_FALSE(state.HQPlaceFree(1, 1));
    EXPECT_TRUE(state.HQPlaceFree(1, 2));
    EXPECT_FALSE(state.HQPlaceFree(2, 0));
    EXPECT_TRUE(state.HQPlaceFree(2, 1));
    const vk::BoardView view = vk::ViewOf(state);
    const vk::PlacedBox first = vk::HQPlaceBox(view, 1, 0);
    EXPECT_EQ(state.VehiclePicture(1, 2).Left, first.Left);
    EXPECT_EQ(state.VehiclePicture(1, 2).Top, first.Top);
    const vk::PlacedBox second = vk::HQPlaceBox(view, 1, 1);
    EXPECT_EQ(state.VehiclePicture(1, 4).Top, second.Top);
}

TEST_F(SavedGame, ReadBackGivesTheSameStateOverManyRandomPositions)
{
    std::mt19937 random(20261121);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    const char* words[] = {"tank_1_3_o", "kanon_2_0_w", "infanterie_1_2_1_n", "commando_2_1_0_z", "genie_1_0_2_o", ""};
    for (int round = 0; round < 60; ++round) {
        const int local = pick(1, 2);
        BoardState state = Start(local);
        GameProgress progress;
        progress.ExternalSide = 3 - local;
        progress.TurnNumber = pick(0, 400);
        for (int side = 1; side <= 2; ++side) {
            state.Brandstof(side) = pick(0, 3);
            state.Tsetse(side) = pick(0, 3);
            for (int slot = 0; slot < vk::kVehicleSlots; ++slot) {
                state.VehiclePos(side, slot) = pick(0, 118);
                state.VehicleDir(side, slot) = pick(0, 3);
                state.VehicleCompanies(side, slot) = pick(-1, 5);
                state.VehicleTag(side, slot) = words[pick(0, 5)];
            }
            state.FlagReserve(side) = pick(0, 5);
            state.FlagCarried(side) = pick(0, 5);
            state.FlagHome(side) = pick(0, 5);
            for (int mine = 0; mine < vk::kMinesPerArmy; ++mine)
                state.MinePos(side, mine) = pick(-9, 118);
            state.ReserveCompanies(side) = pick(0, 25);
            state.CampCompanies(side) = pick(0, 25);
            state.PrisonCompanies(side) = pick(0, 25);
            progress.Deck.CardCount[static_cast<std::size_t>(side - 1)] = pick(0, 2);
            progress.Deck.CardHand[static_cast<std::size_t>(side - 1)] = {pick(21, 32), pick(0, 1) * pick(21, 32)};
        }
        state.TsetseVeh = pick(0, 10);
        for (int i = 0; i < 32; ++i)
            progress.Deck.CompassStack[static_cast<std::size_t>(i)] = pick(0, 32);
        progress.Deck.StackPoint = pick(0, 32);

        ASSERT_TRUE(vk::SaveGame(File(), state, progress));
        BoardState read = state;
        GameProgress readProgress = progress;
        Scramble(read, readProgress);
        vk::ReadSavedGame(File(), read, readProgress);
        ASSERT_EQ(read, state) << "round " << round;
        ASSERT_EQ(readProgress, progress) << "round " << round;
    }
}

} // namespace

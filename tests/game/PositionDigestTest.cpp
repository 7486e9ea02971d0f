#include "game/PositionDigest.h"

#include "TempFolder.h"
#include "board/BoardState.h"
#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "game/ActionRecords.h"
#include "game/SavedGame.h"
#include "link/MessageKinds.h"
#include "link/ProfileFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using vk::BoardState;
using vk::GameProgress;

struct Copy {
    BoardState Board;
    GameProgress Progress;
};

// A game some turns in, seen by the copy that plays army `localSide`: the
// two armies differ everywhere a saved game looks, so that a swap of the
// sides that went wrong would show.
Copy GameUnderWay(int localSide)
{
    Copy c;
    c.Board.LocalSide = localSide;
    vk::ResetNewGame(c.Board);
    c.Progress.ExternalSide = localSide == 1 ? 2 : 1;
    c.Progress.TurnNumber = 9;
    for (int i = 0; i < vk::CompassCardCount; ++i)
        c.Progress.Deck.CompassStack[static_cast<std::size_t>(i)] = (i * 7) % 32 + 1;
    c.Progress.Deck.StackPoint = 29;
    c.Progress.Deck.CardCount = {1, 2};
    c.Progress.Deck.CardHand = {{{23, 0}, {26, 30}}};

    BoardState& b = c.Board;
    b.VehiclePos(1, 0) = 47;
    b.VehicleCompanies(1, 0) = 3;
    b.VehicleDir(1, 0) = vk::kEast;
    b.VehicleTag(1, 0) = "tank_1_3_o";
    b.VehiclePos(2, 3) = vk::HQField(2);
    b.VehicleCompanies(2, 3) = 2;
    b.VehicleTag(2, 3) = "infanterie_2_2_0_w";
    b.MinePos(1, 0) = -6;
    b.MinePos(2, 1) = 60;
    b.ReserveCompanies(1) = 9;
    b.CampCompanies(1) = 13;
    b.PrisonCompanies(2) = 1;
    b.FlagReserve(2) = 4;
    b.FlagHome(2) = 1;
    b.Brandstof(1) = 3;
    b.Tsetse(2) = 2;
    b.TsetseVeh = 4;
    vk::RebuildBoardCells(b);
    return c;
}

// The same game on the other copy: the armies stay, the sides swap.
Copy OtherSide(const Copy& c)
{
    Copy other = c;
    other.Board.LocalSide = c.Progress.ExternalSide;
    other.Progress.ExternalSide = c.Board.LocalSide;
    return other;
}

std::string Digest(const Copy& c)
{
    return vk::PositionDigest(c.Board, c.Progress);
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = text.find("\r\n", at);
        if (end == std::string::npos)
            end = text.size();
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

// A saved game's text turned to the other copy's side: _LOK and _EXT sections
// swap names, and so do the values of LOK and EXT.
std::string TurnedText(const std::string& text)
{
    std::vector<std::string> lines = Lines(text);
    std::string lok, ext;
    for (std::string& line : lines) {
        const auto swapEnd = [&line](const std::string& from, const std::string& to) {
            const std::string end = from + "]";
            if (line.size() > end.size() && line.compare(line.size() - end.size(), end.size(), end) == 0) {
                line = line.substr(0, line.size() - end.size()) + to + "]";
                return true;
            }
            return false;
        };
        if (swapEnd("_LOK", "_EXT") || swapEnd("_EXT", "_LOK"))
            continue;
        if (line.rfind("LOK=", 0) == 0)
            lok = line.substr(4);
        else if (line.rfind("EXT=", 0) == 0)
            ext = line.substr(4);
    }
    for (std::string& line : lines) {
        if (line.rfind("LOK=", 0) == 0)
            line = "LOK=" + ext;
        else if (line.rfind("EXT=", 0) == 0)
            line = "EXT=" + lok;
    }
    return Joined(lines);
}

TEST(PositionDigest, IsFnv1a64OfTheCanonicalTextIn16LowercaseHexDigits)
{
    // The published test values of FNV-1a 64.
    EXPECT_EQ(vk::Fnv1a64(""), 0xcbf29ce484222325ULL);
    EXPECT_EQ(vk::Fnv1a64("a"), 0xaf63dc4c8601ec8cULL);
    EXPECT_EQ(vk::Fnv1a64("foobar"), 0x85944171f73967e8ULL);

    const Copy c = GameUnderWay(1);
    const std::string digest = Digest(c);
    ASSERT_EQ(digest.size(), 16U);
    EXPECT_TRUE(vk::IsPositionDigest(digest));
    char expected[17];
    std::snprintf(expected, sizeof expected, "%016llx",
                  static_cast<unsigned long long>(vk::Fnv1a64(vk::CanonicalPositionText(c.Board, c.Progress))));
    EXPECT_EQ(digest, expected);
}

TEST(PositionDigest, CanonicalTextNamesTheArmiesAndLeavesTheSidesOut)
{
    const Copy c = GameUnderWay(2);
    const std::string text = vk::CanonicalPositionText(c.Board, c.Progress);
    EXPECT_NE(text.find("VEHPOS_1.VEH00=47\n"), std::string::npos);
    EXPECT_NE(text.find("VEHTAG_2.VEH03=infanterie_2_2_0_w\n"), std::string::npos);
    EXPECT_NE(text.find("KOMP_1.RES=9\n"), std::string::npos);
    EXPECT_NE(text.find("CARD_2.CRD2=30\n"), std::string::npos);
    EXPECT_NE(text.find("MIJN_GER.POS00=-6\n"), std::string::npos);
    EXPECT_NE(text.find("MAIN.BEURT=9\n"), std::string::npos);
    EXPECT_NE(text.find("MAIN.BRANDSTOF1=3\n"), std::string::npos);
    EXPECT_NE(text.find("STACK.POINT=29\n"), std::string::npos);
    EXPECT_EQ(text.find("_LOK"), std::string::npos);
    EXPECT_EQ(text.find("_EXT"), std::string::npos);
    EXPECT_EQ(text.find("MAIN.LOK="), std::string::npos);
    EXPECT_EQ(text.find("MAIN.EXT="), std::string::npos);
    EXPECT_EQ(text.find('\r'), std::string::npos);

    // Sorted, one line for each key of the saved game but LOK and EXT.
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        ASSERT_NE(end, std::string::npos) << "every line ends with a line feed";
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
    std::size_t keys = 0;
    for (const std::string& line : Lines(vk::SavedGameText(c.Board, c.Progress)))
        if (line.find('=') != std::string::npos)
            ++keys;
    EXPECT_EQ(lines.size(), keys - 2);
}

TEST(PositionDigest, SameGameSeenFromTheOtherSideGivesTheSameDigest)
{
    for (int localSide : {1, 2}) {
        const Copy mine = GameUnderWay(localSide);
        const Copy theirs = OtherSide(mine);
        // The saved games differ: each names its own army _LOK ...
        EXPECT_NE(vk::SavedGameText(mine.Board, mine.Progress), vk::SavedGameText(theirs.Board, theirs.Progress));
        // ... and the digests do not.
        EXPECT_EQ(vk::CanonicalPositionText(mine.Board, mine.Progress),
                  vk::CanonicalPositionText(theirs.Board, theirs.Progress));
        EXPECT_EQ(Digest(mine), Digest(theirs)) << "local side " << localSide;
    }
}

TEST(PositionDigest, SavedGameTextTurnedToTheOtherSideReadsBackToTheSameDigest)
{
    const Copy mine = GameUnderWay(1);
    const std::string turned = TurnedText(vk::SavedGameText(mine.Board, mine.Progress));
    Copy theirs;
    vk::ResetNewGame(theirs.Board);
    vk::ReadSavedGameText(turned, theirs.Board, theirs.Progress);
    EXPECT_EQ(theirs.Board.LocalSide, 2);
    EXPECT_EQ(theirs.Progress.ExternalSide, 1);
    const Copy expected = OtherSide(mine);
    EXPECT_EQ(vk::SavedGameText(theirs.Board, theirs.Progress),
              vk::SavedGameText(expected.Board, expected.Progress));
    EXPECT_EQ(Digest(theirs), Digest(mine));
}

TEST(PositionDigest, EveryValueOfTheSavedGameCounts)
{
    const Copy original = GameUnderWay(1);
    const std::string digest = Digest(original);
    const std::vector<std::string> lines = Lines(vk::SavedGameText(original.Board, original.Progress));
    std::size_t changed = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t equals = lines[i].find('=');
        if (equals == std::string::npos || lines[i].rfind("LOK=", 0) == 0 || lines[i].rfind("EXT=", 0) == 0)
            continue;
        std::vector<std::string> other = lines;
        const std::string value = other[i].substr(equals + 1);
        const bool number = !value.empty() && value.find_first_not_of("-0123456789") == std::string::npos;
        other[i] = other[i].substr(0, equals + 1) + (number ? std::to_string(std::stoi(value) + 1) : value + "x");
        Copy c;
        vk::ReadSavedGameText(Joined(other), c.Board, c.Progress);
        EXPECT_NE(Digest(c), digest) << "a change of " << lines[i] << " is not seen";
        ++changed;
    }
    // MAIN 6 but LOK and EXT, 8 sections of 11 vehicles, flags 6, mines 10,
    // companies 6, cards 6, the stack 33.
    EXPECT_EQ(changed, 155U);
}

TEST(PositionDigest, OneValueChangedOnOneCopyMakesTheCopiesDiffer)
{
    const Copy mine = GameUnderWay(2);
    Copy theirs = OtherSide(mine);
    ASSERT_EQ(Digest(mine), Digest(theirs));
    ASSERT_EQ(vk::ChangePositionValue(theirs.Board, theirs.Progress, "KOMP_LOK", "RES", "7"), "");
    EXPECT_EQ(theirs.Board.ReserveCompanies(1), 7);
    EXPECT_NE(Digest(mine), Digest(theirs));
    // Put back, they agree again.
    ASSERT_EQ(vk::ChangePositionValue(theirs.Board, theirs.Progress, "KOMP_LOK", "RES", "9"), "");
    EXPECT_EQ(Digest(mine), Digest(theirs));
}

TEST(PositionDigest, WellFormedDigestsOnly)
{
    EXPECT_TRUE(vk::IsPositionDigest("0123456789abcdef"));
    EXPECT_FALSE(vk::IsPositionDigest("0123456789ABCDEF"));
    EXPECT_FALSE(vk::IsPositionDigest("0123456789abcde"));
    EXPECT_FALSE(vk::IsPositionDigest("0123456789abcdef0"));
    EXPECT_FALSE(vk::IsPositionDigest("-1"));
    EXPECT_FALSE(vk::IsPositionDigest("0123456789abcdeg"));
}

TEST(ChangePositionValue, ChangesOneValueAsTheSavedGameNamesIt)
{
    Copy c = GameUnderWay(2);
    const Copy before = c;
    // _LOK is this copy's army: army 2 here.
    EXPECT_EQ(vk::ChangePositionValue(c.Board, c.Progress, "KOMP_LOK", "RES", "7"), "");
    EXPECT_EQ(c.Board.ReserveCompanies(2), 7);
    EXPECT_EQ(c.Board.ReserveCompanies(1), before.Board.ReserveCompanies(1));
    EXPECT_EQ(vk::ChangePositionValue(c.Board, c.Progress, "VEHTAG_EXT", "VEH00", "tank_1_3_z"), "");
    EXPECT_EQ(c.Board.VehicleTag(1, 0), "tank_1_3_z");
    EXPECT_EQ(vk::ChangePositionValue(c.Board, c.Progress, "STACK", "POINT", "28"), "");
    EXPECT_EQ(c.Progress.Deck.StackPoint, 28);
    // Nothing else moved.
    Copy expected = before;
    expected.Board.ReserveCompanies(2) = 7;
    expected.Board.VehicleTag(1, 0) = "tank_1_3_z";
    expected.Progress.Deck.StackPoint = 28;
    EXPECT_EQ(vk::SavedGameText(c.Board, c.Progress), vk::SavedGameText(expected.Board, expected.Progress));
}

TEST(ChangePositionValue, AMovedVehicleTakesItsCellWithIt)
{
    Copy c = GameUnderWay(1);
    ASSERT_EQ(c.Board.BoardCell(47), 1);
    EXPECT_EQ(vk::ChangePositionValue(c.Board, c.Progress, "VEHPOS_LOK", "VEH00", "48"), "");
    EXPECT_EQ(c.Board.VehiclePos(1, 0), 48);
    EXPECT_EQ(c.Board.BoardCell(47), 0);
    EXPECT_EQ(c.Board.BoardCell(48), 1);
}

TEST(ChangePositionValue, RefusesWhatASavedGameCouldNotHoldAndChangesNothing)
{
    Copy c = GameUnderWay(1);
    const std::string text = vk::SavedGameText(c.Board, c.Progress);
    for (const auto& [section, key, value] : std::vector<std::tuple<std::string, std::string, std::string>>{
             {"KOMP_LOK", "NONE", "1"},
             {"NOSECTION", "RES", "1"},
             {"MAIN", "LOK", "2"},
             {"main", "ext", "1"},
             {"KOMP_LOK", "RES", "zeven"},
             {"KOMP_LOK", "RES", "99"},
             {"VEHPOS_EXT", "VEH01", "400"},
             {"VEHTAG_LOK", "VEH00", "tank_1_3_s"},
             {"VEHTAG_LOK", "VEH00", "tank\r\nPOINT=1"},
         }) {
        EXPECT_NE(vk::ChangePositionValue(c.Board, c.Progress, section, key, value), "") << section << "/" << key;
        EXPECT_EQ(vk::SavedGameText(c.Board, c.Progress), text) << section << "/" << key;
    }
}

class EndOfTurnRecord : public vk::test::TempFolderTest {};

TEST_F(EndOfTurnRecord, HashIsWrittenBeforeTheCommitKeyTurn)
{
    const Copy c = GameUnderWay(1);
    const std::string digest = Digest(c);
    const auto keys = vk::EndOfTurnRecordKeys(7, digest);
    ASSERT_EQ(keys.size(), 2U);
    EXPECT_EQ(keys[0], (std::pair<std::string, std::string>{"HASH", digest}));
    EXPECT_EQ(keys[1], (std::pair<std::string, std::string>{"TURN", "7"}));

    const auto path = folder / "Piet.eot";
    ASSERT_TRUE(vk::WriteEndOfTurnRecord(path, 7, digest));
    EXPECT_EQ(Get(path), "[GENERAL]\r\nHASH=" + digest + "\r\nTURN=7\r\n");
    const vk::EndOfTurnMessage read = vk::ReadEndOfTurnMessage(path);
    EXPECT_EQ(read.Turn, 7);
    ASSERT_TRUE(read.Digest.has_value());
    EXPECT_EQ(*read.Digest, digest);
    // An older reader asks for TURN only, and finds it.
    EXPECT_EQ(vk::ReadEndOfTurnRecord(path), 7);
}

TEST_F(EndOfTurnRecord, HalfWrittenFileHoldsHashButNoTurnYet)
{
    // The writer publishes the file once per key: between the two writes the
    // reader's guard (TURN, read until it isn't -1) still waits.
    const auto path = folder / "Piet.eot";
    Put(path, "[GENERAL]\r\nHASH=0123456789abcdef\r\n");
    EXPECT_EQ(vk::ReadEndOfTurnRecord(path), -1);
    int waits = 0;
    const auto values = vk::ReadMessage(vk::KindOf(vk::MessageKindId::EndOfTurn), path.string(), [&] {
        if (++waits == 2)
            Put(path, "[GENERAL]\r\nHASH=0123456789abcdef\r\nTURN=4\r\n");
    });
    EXPECT_EQ(waits, 2);
    const vk::EndOfTurnMessage read = vk::EndOfTurnMessageFrom(values);
    EXPECT_EQ(read.Turn, 4);
    EXPECT_EQ(read.Digest, std::optional<std::string>("0123456789abcdef"));
}

TEST_F(EndOfTurnRecord, FileWithoutHashReadsAsBefore)
{
    const auto path = folder / "Piet.eot";
    ASSERT_TRUE(vk::WriteEndOfTurnRecord(path, 12));
    EXPECT_EQ(Get(path), "[GENERAL]\r\nTURN=12\r\n");
    const auto values =
        vk::ReadMessage(vk::KindOf(vk::MessageKindId::EndOfTurn), path.string(), [] { FAIL() << "no wait"; });
    const vk::EndOfTurnMessage read = vk::EndOfTurnMessageFrom(values);
    EXPECT_EQ(read.Turn, 12);
    EXPECT_FALSE(read.Digest.has_value());
    EXPECT_EQ(vk::ReadEndOfTurnMessage(path), (vk::EndOfTurnMessage{12, std::nullopt}));
}

TEST_F(EndOfTurnRecord, HashThatIsNoDigestCountsAsNone)
{
    const auto path = folder / "Piet.eot";
    for (const char* hash : {"", "-1", "XYZ", "0123456789ABCDEF", "0123456789abcdef00"}) {
        Put(path, std::string("[GENERAL]\r\nHASH=") + hash + "\r\nTURN=3\r\n");
        const vk::EndOfTurnMessage read = vk::ReadEndOfTurnMessage(path);
        EXPECT_EQ(read.Turn, 3) << hash;
        EXPECT_FALSE(read.Digest.has_value()) << hash;
    }
}

} // namespace

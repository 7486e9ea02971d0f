#include "game/SavedGame.h"

#include "board/BoardTables.h"
#include "board/BoardView.h"
#include "board/VehicleTag.h"
#include "game/ProfileValues.h"
#include "link/PlainFiles.h"
#include "link/ProfileFile.h"

#include <string>
#include <system_error>
#include <type_traits>
#include <utility>

namespace vk {

namespace {

// One pass of the saved game's keys in the order of writing. The writer and
// the reader both run it, so the two can never disagree on a key.
// `key(section, key, value)` takes an int or a text, by reference for the
// reader and by value or const reference for the writer.
template <typename State, typename Progress, typename Key>
void VisitKeys(State& state, Progress& progress, int local, int external, Key key)
{
    const auto intKey = [&](const char* section, const std::string& name, auto&& value) {
        key(section, name, std::forward<decltype(value)>(value));
    };
    const auto& textKey = intKey;
    intKey("MAIN", "BRANDSTOF1", state.Brandstof(1));
    intKey("MAIN", "BRANDSTOF2", state.Brandstof(2));
    intKey("MAIN", "TSETSE1", state.Tsetse(1));
    intKey("MAIN", "TSETSE2", state.Tsetse(2));
    intKey("MAIN", "TSETSEVEH", state.TsetseVeh);

    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const std::string name = IndexedKey("VEH", slot);
        intKey("VEHPOS_LOK", name, state.VehiclePos(local, slot));
        intKey("VEHPOS_EXT", name, state.VehiclePos(external, slot));
        intKey("CMPVEH_LOK", name, state.VehicleCompanies(local, slot));
        intKey("CMPVEH_EXT", name, state.VehicleCompanies(external, slot));
        intKey("DIRVEH_LOK", name, state.VehicleDir(local, slot));
        intKey("DIRVEH_EXT", name, state.VehicleDir(external, slot));
        textKey("VEHTAG_LOK", name, state.VehicleTag(local, slot));
        textKey("VEHTAG_EXT", name, state.VehicleTag(external, slot));
    }

    intKey("VLAG_LOK", "RES", state.FlagReserve(local));
    intKey("VLAG_EXT", "RES", state.FlagReserve(external));
    intKey("VLAG_LOK", "VEH", state.FlagCarried(local));
    intKey("VLAG_EXT", "VEH", state.FlagCarried(external));
    intKey("VLAG_LOK", "KMP", state.FlagHome(local));
    intKey("VLAG_EXT", "KMP", state.FlagHome(external));

    for (int mine = 0; mine < kMinesPerArmy; ++mine) {
        const std::string name = IndexedKey("POS", mine);
        intKey("MIJN_GER", name, state.MinePos(1, mine));
        intKey("MIJN_REB", name, state.MinePos(2, mine));
    }

    intKey("KOMP_LOK", "RES", state.ReserveCompanies(local));
    intKey("KOMP_EXT", "RES", state.ReserveCompanies(external));
    intKey("KOMP_LOK", "KMP", state.CampCompanies(local));
    intKey("KOMP_EXT", "KMP", state.CampCompanies(external));
    intKey("KOMP_LOK", "PRS", state.PrisonCompanies(local));
    intKey("KOMP_EXT", "PRS", state.PrisonCompanies(external));

    auto& deck = progress.Deck;
    const auto l = static_cast<std::size_t>(local - 1);
    const auto e = static_cast<std::size_t>(external - 1);
    intKey("CARD_LOK", "CNT", deck.CardCount[l]);
    intKey("CARD_LOK", "CRD1", deck.CardHand[l][0]);
    intKey("CARD_LOK", "CRD2", deck.CardHand[l][1]);
    intKey("CARD_EXT", "CNT", deck.CardCount[e]);
    intKey("CARD_EXT", "CRD1", deck.CardHand[e][0]);
    intKey("CARD_EXT", "CRD2", deck.CardHand[e][1]);

    for (int i = 0; i < CompassCardCount; ++i)
        intKey("STACK", IndexedKey("CARD", i + 1), deck.CompassStack[static_cast<std::size_t>(i)]);
    intKey("STACK", "POINT", deck.StackPoint);
}

int CheckedSide(int side, const char* key)
{
    if (side != 1 && side != 2)
        throw SavedGameError("saved game: " + std::string(key) + " is " + std::to_string(side) + ", not a side");
    return side;
}

} // namespace

std::filesystem::path SavedGamePath(const std::filesystem::path& dataFolder, const std::string& externalUser)
{
    return dataFolder / (externalUser + ".vkh");
}

std::string SavedGameText(const BoardState& state, const GameProgress& progress)
{
    const int local = CheckedSide(state.LocalSide, "LOK");
    const int external = CheckedSide(progress.ExternalSide, "EXT");
    ProfileText text;
    const auto put = [&](const char* section, const std::string& key, const std::string& value) {
        text.Write(section, key, value);
    };
    put("MAIN", "LOK", std::to_string(local));
    put("MAIN", "EXT", std::to_string(external));
    put("MAIN", "BEURT", std::to_string(progress.TurnNumber));

    VisitKeys(state, progress, local, external, [&](const char* section, const std::string& key, const auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>)
            put(section, key, value);
        else
            put(section, key, std::to_string(value));
    });
    return text.Text();
}

bool SaveGame(const std::filesystem::path& path, const BoardState& state, const GameProgress& progress)
{
    // The whole game goes to disk under a temporary name and replaces an old
    // one only then: a save that fails half-way leaves the old file whole.
    return PublishPlainFile(path.string(), SavedGameText(state, progress), Durability::OnDisk);
}

namespace {

// Reads a saved game through `lookup(section, key, default)`, which gives a
// key's value or the default: LOK and EXT first, then every key of VisitKeys
// through the sides just read.
template <typename Lookup>
void ReadPosition(const Lookup& lookup, BoardState& state, GameProgress& progress)
{
    const auto readInt = [&](const char* section, const std::string& key) {
        return ProfileInt(lookup(section, key, "-1"), std::string(section) + "/" + key);
    };
    state.LocalSide = readInt("MAIN", "LOK");
    progress.ExternalSide = readInt("MAIN", "EXT");
    const int local = CheckedSide(state.LocalSide, "LOK");
    const int external = CheckedSide(progress.ExternalSide, "EXT");
    progress.TurnNumber = readInt("MAIN", "BEURT");

    VisitKeys(state, progress, local, external, [&](const char* section, const std::string& key, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>)
            value = lookup(section, key, "");
        else
            value = readInt(section, key);
    });
}

} // namespace

void ReadSavedGame(const std::filesystem::path& path, BoardState& state, GameProgress& progress)
{
    ReadPosition(
        [&path](const char* section, const std::string& key, const char* defaultValue) {
            return ReadProfileString(section, key, defaultValue, path);
        },
        state, progress);
}

void ReadSavedGameText(const std::string& text, BoardState& state, GameProgress& progress)
{
    ReadPosition(
        [&text](const char* section, const std::string& key, const char* defaultValue) {
            return ReadProfileStringInText(text, section, key, defaultValue);
        },
        state, progress);
}

namespace {

bool InRange(int value, int low, int high)
{
    return value >= low && value <= high;
}

// Where a mine may be: its own store, the enemy's camp (captured),
// a road square, aboard one of its commandos or genies, aboard an enemy genie.
bool MineValueValid(int value)
{
    return value == CampField(1) || value == CampField(2) || InRange(value, kFirstRoadField, kLastRoadField) ||
           InRange(value, -9, -6) || value == 5 - 8 || value == 5 - 9;
}

std::string VehicleProblem(const BoardState& state, int side, int slot)
{
    const std::string which = "vehicle " + std::to_string(slot) + " of army " + std::to_string(side);
    const int position = state.VehiclePos(side, slot);
    if (!InRange(position, kOutOfGame, kLastField))
        return which + " stands on field " + std::to_string(position);
    if (!InRange(state.VehicleDir(side, slot), kNorth, kWest))
        return which + " has heading " + std::to_string(state.VehicleDir(side, slot));
    if (!InRange(state.VehicleCompanies(side, slot), -1, VehicleCapacity(slot)))
        return which + " carries " + std::to_string(state.VehicleCompanies(side, slot)) + " companies";
    const std::string& tag = state.VehicleTag(side, slot);
    const std::string start = std::string(VehicleTypeWord(slot)) + "_" + std::to_string(side) + "_";
    if (tag.compare(0, start.size(), start) != 0 || TagHeading(tag) < 0)
        return which + " has the tag \"" + tag + "\"";
    return {};
}

std::string ArmyProblem(const BoardState& state, const GameProgress& progress, int side)
{
    for (int slot = 0; slot < kVehicleSlots; ++slot)
        if (std::string problem = VehicleProblem(state, side, slot); !problem.empty())
            return problem;
    const std::string army = " of army " + std::to_string(side);
    for (int count : {state.ReserveCompanies(side), state.PrisonCompanies(side)})
        if (!InRange(count, 0, kCompaniesPerArmy))
            return "a company count" + army + " is " + std::to_string(count);
    // Camouflage with one company left in the camp and room for two takes
    // the camp to -1, a position of the game like any other.
    if (!InRange(state.CampCompanies(side), -1, kCompaniesPerArmy))
        return "the camp" + army + " holds " + std::to_string(state.CampCompanies(side)) + " companies";
    for (int flags : {state.FlagReserve(side), state.FlagCarried(side), state.FlagHome(side)})
        if (!InRange(flags, 0, kFlagsPerArmy))
            return "a flag count" + army + " is " + std::to_string(flags);
    for (int mine = 0; mine < kMinesPerArmy; ++mine)
        if (!MineValueValid(state.MinePos(side, mine)))
            return "mine " + std::to_string(mine) + army + " lies at " + std::to_string(state.MinePos(side, mine));
    const auto index = static_cast<std::size_t>(side - 1);
    if (!InRange(progress.Deck.CardCount[index], 0, 2))
        return "the card count" + army + " is " + std::to_string(progress.Deck.CardCount[index]);
    for (int card : progress.Deck.CardHand[index])
        if (card != 0 && !InRange(card, 21, CompassCardCount))
            return "a card in the hand" + army + " is " + std::to_string(card);
    if (state.Brandstof(side) < 0 || state.Tsetse(side) < 0)
        return "a fuel or tse-tse count" + army + " is below zero";
    return {};
}

} // namespace

std::string SavedGameProblem(const BoardState& state, const GameProgress& progress)
{
    if (progress.TurnNumber < 1)
        return "the turn number is " + std::to_string(progress.TurnNumber);
    for (int side = 1; side <= 2; ++side)
        if (std::string problem = ArmyProblem(state, progress, side); !problem.empty())
            return problem;
    if (!InRange(state.TsetseVeh, 0, kVehicleSlots - 1))
        return "the vehicle under the tse-tse is " + std::to_string(state.TsetseVeh);
    for (int i = 0; i < CompassCardCount; ++i)
        if (!InRange(progress.Deck.CompassStack[static_cast<std::size_t>(i)], 0, CompassCardCount))
            return "stack entry " + std::to_string(i + 1) + " is " +
                   std::to_string(progress.Deck.CompassStack[static_cast<std::size_t>(i)]);
    if (!InRange(progress.Deck.StackPoint, 0, CompassCardCount + 1))
        return "the stack pointer is " + std::to_string(progress.Deck.StackPoint);
    return {};
}

std::string ChangePositionValue(BoardState& state, GameProgress& progress, const std::string& section,
                                const std::string& key, const std::string& value)
{
    const std::string text = SavedGameText(state, progress);
    // No value of a saved game holds a line end, so this default tells a
    // missing key from any value.
    if (ReadProfileStringInText(text, section, key, "\n") == "\n")
        return "the position holds no key " + key + " in section " + section;
    if (SameProfileName(section, "MAIN") && (SameProfileName(key, "LOK") || SameProfileName(key, "EXT")))
        return "the sides of a running game cannot be changed";
    if (value.find_first_of("\r\n") != std::string::npos)
        return "a value cannot hold a line end";

    ProfileText changed = ProfileText::FromText(text);
    changed.Write(section, key, value);

    BoardState board = state;
    GameProgress read = progress;
    try {
        ReadSavedGameText(changed.Text(), board, read);
    } catch (const RunTimeFault& fault) {
        return fault.what();
    }
    if (std::string problem = SavedGameProblem(board, read); !problem.empty())
        return problem;
    // The cells of the board follow a vehicle or a mine that was moved, as a
    // loaded game's do; other changes leave them as they stand.
    const auto startsWith = [&section](std::string_view prefix) {
        return section.size() >= prefix.size() && SameProfileName(section.substr(0, prefix.size()), prefix);
    };
    if (startsWith("VEHPOS_") || startsWith("MIJN_"))
        RebuildBoardCells(board);
    state = std::move(board);
    progress = std::move(read);
    return {};
}

void LoadGame(const std::filesystem::path& path, BoardState& state, GameProgress& progress)
{
    ReadSavedGame(path, state, progress);
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

void DrawBoardAfterLoad(BoardState& state)
{
    RebuildBoardCells(state);
    DrawBoardSide(state, state.LocalSide == state.BoardSide ? 1 : 2);
}

} // namespace vk

#pragma once

#include "board/BoardState.h"
#include "cards/Deck.h"
#include "shell/RunTimeFault.h"

#include <filesystem>
#include <string>

namespace vk {

// What a saved game holds beside the board and the armies of BoardState
// (whose LocalSide is the key LOK).
struct GameProgress {
    int ExternalSide = 2;
    int TurnNumber = 0;
    CompassDeck Deck;
    bool operator==(const GameProgress&) const = default;
};

// The file of the game against one opponent: DataFolder + the opponent's
// player name + ".vkh".
std::filesystem::path SavedGamePath(const std::filesystem::path& dataFolder, const std::string& externalUser);

// A saved game whose LOK or EXT is no side: nothing can be stored through it.
class SavedGameError : public RunTimeFault {
public:
    using RunTimeFault::RunTimeFault;
};

// The text of a saved game: every key, written key by key, in the order MAIN; per slot VEHPOS, CMPVEH, DIRVEH, VEHTAG, each _LOK then _EXT;
// the six flag keys; per mine MIJN_GER then MIJN_REB; the companies; the
// cards; STACK CARD01..CARD32 and POINT. _LOK sections hold the army of
// LocalSide, _EXT sections that of ExternalSide; mines, BRANDSTOF and
// TSETSE are stored by army. Two copies in step hold the same text (seen
// from their own sides).
std::string SavedGameText(const BoardState& state, const GameProgress& progress);

// SaveGame: SavedGameText written to disk under a temporary name and renamed
// over the path, so that an old file stands until the new one is whole.
// Returns false when the write failed.
bool SaveGame(const std::filesystem::path& path, const BoardState& state, const GameProgress& progress);

// Reads a saved game over `state` and `progress`: LOK into LocalSide and EXT
// into ExternalSide first, then the rest through the sides just read. A
// missing key gives -1 (a tag the empty text). Only what the file holds is
// touched: BoardCell, HQCount, HQPlaceFree and the pictures are left to
// DrawBoardAfterLoad. Raises ProfileValueError for a value that is no 16-bit
// number and SavedGameError for a LOK or EXT that is not 1 or 2.
void ReadSavedGame(const std::filesystem::path& path, BoardState& state, GameProgress& progress);

// ReadSavedGame on the text of a saved game in memory, as SavedGameText makes it.
void ReadSavedGameText(const std::string& text, BoardState& state, GameProgress& progress);

// Changes one value of the position as a saved game names it (SECTION and
// KEY as SavedGameText writes them, _LOK and _EXT from this copy's side):
// the text is changed and read back the way a saved game is read. A changed
// vehicle or mine position rebuilds the board's cells from the vehicles and
// mines; the pictures are left alone. Refused, with the reason in English and nothing changed, for a
// key the position doesn't hold, for LOK and EXT, and for a value that is no
// number where one belongs or that leaves a position SavedGameProblem
// rejects. Empty when done.
std::string ChangePositionValue(BoardState& state, GameProgress& progress, const std::string& section,
                                const std::string& key, const std::string& value);

// What makes a position read from a saved game unfit to play on, in English
// for the run log: a value outside its range, such as the -1 of a missing
// key. Empty for a position that can be played.
std::string SavedGameProblem(const BoardState& state, const GameProgress& progress);

// LoadGame: ReadSavedGame, then the file is deleted, so that a saved game is
// good for one start.
void LoadGame(const std::filesystem::path& path, BoardState& state, GameProgress& progress);

// The redraw after a load: BoardCell rebuilt from the vehicle and mine
// positions, then the board drawn from the view of army 1 when LocalSide
// equals BoardSide and from that of army 2 otherwise, which hands out the HQ
// places anew in slot order (HQCount, HQPlaceFree).
void DrawBoardAfterLoad(BoardState& state);

} // namespace vk

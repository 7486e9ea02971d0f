#pragma once

#include "link/MessageKinds.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vk {

// The action record of a turn: index 0 the first action, index 1 the second,
// whichever die each used; -1 means not set.
struct ActionRecord {
    std::array<int, 2> ActVeh{-1, -1};
    std::array<int, 2> ActCode{-1, -1};
    std::array<int, 2> ActFrom{-1, -1};
    std::array<int, 2> ActTo{-1, -1};
    bool operator==(const ActionRecord&) const = default;
};

// Action codes (ACT).
inline constexpr int kActInterceptedShot = 0; // a shot at the jeep stopped by a Vrijgeleide
inline constexpr int kActMove = 1;
inline constexpr int kActShot = 2;
inline constexpr int kActMoveLeaveMine = 3;
inline constexpr int kActMovePickUpMine = 4;
inline constexpr int kActMoveLoadFlag = 5;

// Dice codes (DICE).
inline constexpr int kDiceLeft = 1;
inline constexpr int kDiceRight = 2;
inline constexpr int kDiceBoth = 3;

// All eight words to -1 (a new turn, phase 4).
void ClearActionRecord(ActionRecord& record);
// The words of index 1 to -1 (phases 9 and 18).
void ClearSecondAction(ActionRecord& record);

// The player said yes to loading a flag. The code 5 always lands in index 0,
// whichever action it is: on a second action the record that travels keeps
// code 1, so the opponent sees a plain move. Kept as the game has it.
void SetFlagLoadCode(ActionRecord& record);

// The phase an action is done in, with what its record carries.
struct ActionPhase {
    int Phase;       // phase left: 7, 8, 12, 13, 16, 17, 21, 22, 25, 26
    int DoneValue;   // the phase that says the action was carried out
    int DiceCode;    // DICE: 1 left, 2 right, 3 both
    int RecordIndex; // index of ActionRecord
    bool FromCamp;   // the vehicle came from the camp
};
// The entry of a phase, or nothing for a phase that does no action.
std::optional<ActionPhase> FindActionPhase(int phase);

// The .act message: the keys, in the order they are written.
struct ActionMessage {
    int Direct = -1; // heading after the action
    int Dice = -1;
    int Veh = -1;
    int Act = -1;
    int From = -1;
    int To = -1;
    std::string VehTag; // written last: empty means the record is not complete yet
    bool operator==(const ActionMessage&) const = default;
};

// The message for the action at `index`, with the die code, the heading left
// by the move judge and the vehicle's tag after the action.
ActionMessage MakeActionMessage(const ActionRecord& record, int index, int diceCode, int heading,
                                const std::string& vehicleTag);

// .wrp: D1, D2.
bool WriteRollRecord(const std::filesystem::path& path, int dice1, int dice2);
// .eot: HASH, the digest of the sender's position after its turn
// (PositionDigest), then TURN, the commit key. Without a digest only TURN is
// written, as a copy that has none to give would.
KeyValues EndOfTurnRecordKeys(int turnNumber, const std::string& digest = {});
bool WriteEndOfTurnRecord(const std::filesystem::path& path, int turnNumber, const std::string& digest = {});
// .act: DIRECT, DICE, VEH, ACT, FROM, TO, VEHTAG; in the record of phase 8,
// VEH before DICE. VEHTAG is always last: it is the commit mark. The keys
// come from the table of message kinds.
KeyValues ActionRecordKeys(const ActionMessage& message, int phase);
bool WriteActionRecord(const std::filesystem::path& path, const ActionMessage& message, int phase);

// One read of each key of a record as it stands now, missing keys giving -1
// (VEHTAG: the empty text). The reader repeats until the commit key has come.
struct RollMessage {
    int D1 = -1;
    int D2 = -1;
};
RollMessage ReadRollRecord(const std::filesystem::path& path);
int ReadEndOfTurnRecord(const std::filesystem::path& path);
// The .eot as read: the turn, and the sender's digest when the file holds a
// well-formed one (an older sender writes none; anything else counts as none).
struct EndOfTurnMessage {
    int Turn = -1;
    std::optional<std::string> Digest;
    bool operator==(const EndOfTurnMessage&) const = default;
};
EndOfTurnMessage EndOfTurnMessageFrom(const MessageValues& values);
EndOfTurnMessage ReadEndOfTurnMessage(const std::filesystem::path& path);
ActionMessage ReadActionRecord(const std::filesystem::path& path);
// The message from the values a guarded read of the kind gave.
ActionMessage ActionMessageFrom(const MessageValues& values);

// The receiver keeps a record in index 0, whichever action of the turn it is.
void StoreReceivedAction(ActionRecord& record, const ActionMessage& message);


// A line of LogAction; Timed lines end in " at " and take the time of day.
struct ActionLogLine {
    std::string Text;
    bool Timed = false;
    bool operator==(const ActionLogLine&) const = default;
};
// The run-log lines of an own action. They are made from index 0 of the
// record only: for a second action they repeat the first one's vehicle,
// code, start and destination, and only the dice line differs. Kept so.
std::vector<ActionLogLine> LogActionLines(const ActionRecord& record, int diceCode, bool fromCamp);

} // namespace vk

#pragma once

// The kinds of message file that the two copies exchange: a name, an
// extension, a section, the keys in the order the writer writes them, who
// writes and who reads, and how the reader guards against a file that the
// synchronisation service has delivered only in part.

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vk {

enum class MessageKindId {
    Presence,       // .xid
    Invitation,     // .rqs
    Acceptance,     // .acc
    GameStart,      // .goo
    Toss,           // .d01, .d02, ...
    Deck,           // .mkk
    EndOfTurn,      // .eot
    DiceResult,     // .wrp
    Action,         // .act
    GameStopped,    // .stp
    CompassCard,    // .ryc
    PersonnelKept,  // .pna
    PersonnelDealt, // .pnc
    PersonnelUsed,  // .pnu
    Question,       // .ask
    Answer,         // .ans
    RadioYambo,     // .ray
};

// How a reader makes sure it has the whole message.
enum class ReaderWait {
    // The presence of the file is the whole message.
    None,
    // Each key of WaitKeys in turn is read with the default "-1" and read
    // again after 50 ms until it differs from "-1"; the other keys once after.
    RepeatUntilNotMinusOne,
    // All keys are read with the default "-1", and the whole read is repeated
    // after 50 ms until the commit key (the last written) equals "100".
    RepeatAllUntilCommit100,
    // The commit key is read with the default "-1" until it equals "100",
    // the other keys once after.
    RepeatCommitUntil100,
    // The commit key (the last written) is read with an empty default until
    // it isn't empty, the other keys once after.
    RepeatCommitUntilNotEmpty,
    // The key is read with the default "FAIL" while it reads "FAIL".
    RepeatWhileFail,
    // Read once, with the reader's own value as the default.
    ReadOnceOwnDefault,
    // Each key is read once, with its own position (1, 2, ...) as the default.
    ReadOncePositionDefault,
};

struct MessageKind {
    MessageKindId Id;
    std::string Extension;     // ".xid"; for the toss the prefix ".d" of ".dNN"
    std::string Section;
    std::vector<std::string> Keys;   // in the order of writing
    std::string WrittenBy;
    std::string ReadBy;
    ReaderWait Wait;
    // The keys the reader waits on, in the order it waits.
    std::vector<std::string> WaitKeys;
};

// The table of all kinds, in one place.
const std::vector<MessageKind>& MessageKinds();
const MessageKind& KindOf(MessageKindId id);

// The extension of toss number n: ".d01", ".d02", ...
std::string TossExtension(int tossNumber);

// The path of a message: folder + "/" + writer + extension. The writer is
// the player name of the side that writes it; no part is escaped, so a name
// with blanks makes a file name with blanks.
std::string MessageFileName(std::string_view writer, std::string_view extension);
std::string MessageFilePath(std::string_view folder, std::string_view writer, std::string_view extension);

using MessageValues = std::map<std::string, std::string>;
using KeyValues = std::vector<std::pair<std::string, std::string>>;

// Writes the keys of a message one by one, in the order given, each write
// publishing the whole file; the last key is the reader's commit mark where
// the kind has one. False when a write failed.
bool WriteMessage(const MessageKind& kind, const KeyValues& keys, const std::string& path);

// Values given in the kind's order of keys, paired with their keys.
KeyValues InKeyOrder(const MessageKind& kind, const std::vector<std::string>& values);

// Reads a whole message of the given kind from path with the kind's guard
// against a partly delivered file. `wait50` is called between two reads (it
// waits 50 ms and keeps the interface alive); `ownDefault` is the reader's
// own value for ReadOnceOwnDefault. Like the reader loops of the game it has
// no time limit: a message whose last key never comes holds the reader.
MessageValues ReadMessage(const MessageKind& kind, const std::string& path, const std::function<void()>& wait50,
                          std::string_view ownDefault = {});

} // namespace vk

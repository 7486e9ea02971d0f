#include "link/MessageKinds.h"

#include "link/ExternalPrefix.h"
#include "link/ProfileFile.h"

#include <algorithm>

namespace vk {

namespace {

std::vector<std::string> DeckKeys()
{
    std::vector<std::string> keys;
    for (int i = 1; i <= 32; ++i)
        keys.push_back("Kaart" + ExternalPrefix(i));
    return keys;
}

std::vector<MessageKind> BuildKinds()
{
    using K = MessageKindId;
    using W = ReaderWait;
    return {
        {K::Presence, ".xid", "GENERAL", {"USER_ID"}, "each side's PresencePoll", "the other side's PresencePoll",
         W::None, {}},
        {K::Invitation, ".rqs", "GENERAL", {"USER_ID"}, "cmdRequestToPlay", "the invited side's InvitationPoll",
         W::None, {}},
        {K::Acceptance, ".acc", "GENERAL", {"USER_ID"}, "the invited side's InvitationPoll",
         "the inviter's InvitationPoll", W::None, {}},
        {K::GameStart, ".goo", "GENERAL", {"SPEL"}, "game start", "the other side's game start", W::None, {}},
        {K::Toss, ".d", "GENERAL", {"GOOI"}, "game start", "the other side's game start", W::ReadOnceOwnDefault,
         {}},
        {K::Deck, ".mkk", "GENERAL", DeckKeys(), "the side that won the toss", "the other side's game start",
         W::ReadOncePositionDefault, {}},
        // HASH, the digest of the sender's position, goes before TURN: once
        // the commit key TURN is there, so is HASH. A reader that doesn't
        // know HASH never asks for it.
        {K::EndOfTurn, ".eot", "GENERAL", {"HASH", "TURN"}, "turn loop", "opponent processor",
         W::RepeatUntilNotMinusOne, {"TURN"}},
        {K::DiceResult, ".wrp", "GENERAL", {"D1", "D2"}, "turn controller", "opponent processor",
         W::RepeatUntilNotMinusOne, {"D1", "D2"}},
        {K::Action, ".act", "GENERAL", {"DIRECT", "DICE", "VEH", "ACT", "FROM", "TO", "VEHTAG"}, "turn controller",
         "opponent processor", W::RepeatCommitUntilNotEmpty, {"VEHTAG"}},
        {K::GameStopped, ".stp", "GAME", {"STATUS"}, "cmdStop", "opponent processor", W::RepeatWhileFail,
         {"STATUS"}},
        {K::CompassCard, ".ryc", "GENERAL", {"CARD"}, "turn controller", "opponent processor",
         W::RepeatUntilNotMinusOne, {"CARD"}},
        {K::PersonnelKept, ".pna", "GENERAL", {"CARD"}, "turn controller", "opponent processor",
         W::RepeatUntilNotMinusOne, {"CARD"}},
        {K::PersonnelDealt, ".pnc", "GENERAL", {"CARDOUT", "CARDIN", "CARDIND"}, "turn controller",
         "opponent processor", W::RepeatUntilNotMinusOne, {"CARDIND", "CARDIN"}},
        {K::PersonnelUsed, ".pnu", "GENERAL", {"CARD", "V1", "V2", "V3"}, "playing a Personnel card",
         "opponent processor", W::RepeatAllUntilCommit100, {"V3"}},
        {K::Question, ".ask", "GENERAL", {"QUESTION"}, "the asking side", "opponent processor",
         W::RepeatUntilNotMinusOne, {"QUESTION"}},
        {K::Answer, ".ans", "GENERAL", {"ANSWER"}, "opponent processor", "the asking side",
         W::RepeatUntilNotMinusOne, {"ANSWER"}},
        {K::RadioYambo, ".ray", "GENERAL", {"CARD", "V1", "V2", "V3"}, "Radio Yambo card", "opponent processor",
         W::RepeatCommitUntil100, {"V3"}},
    };
}

std::string Read(const MessageKind& kind, const std::string& key, std::string_view defaultValue,
                 const std::string& path)
{
    return ReadProfileString(kind.Section, key, defaultValue, path);
}

bool Contains(const std::vector<std::string>& keys, const std::string& key)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

const std::vector<MessageKind>& MessageKinds()
{
    static const std::vector<MessageKind> kinds = BuildKinds();
    return kinds;
}

const MessageKind& KindOf(MessageKindId id)
{
    for (const MessageKind& kind : MessageKinds())
        if (kind.Id == id)
            return kind;
    return MessageKinds().front();
}

std::string TossExtension(int tossNumber)
{
    return ".d" + ExternalPrefix(tossNumber);
}

std::string MessageFileName(std::string_view writer, std::string_view extension)
{
    std::string name(writer);
    name += extension;
    return name;
}

std::string MessageFilePath(std::string_view folder, std::string_view writer, std::string_view extension)
{
    std::string path(folder);
    path += '/';
    path += MessageFileName(writer, extension);
    return path;
}

bool WriteMessage(const MessageKind& kind, const KeyValues& keys, const std::string& path)
{
    bool written = true;
    for (const auto& [key, value] : keys)
        written = WriteProfileString(kind.Section, key, value, path) && written;
    return written;
}

KeyValues InKeyOrder(const MessageKind& kind, const std::vector<std::string>& values)
{
    KeyValues keys;
    for (std::size_t i = 0; i < kind.Keys.size() && i < values.size(); ++i)
        keys.emplace_back(kind.Keys[i], values[i]);
    return keys;
}

MessageValues ReadMessage(const MessageKind& kind, const std::string& path, const std::function<void()>& wait50,
                          std::string_view ownDefault)
{
    MessageValues values;
    // The ".ask" reader also asks for V1 to V3, which its writer doesn't write.
    std::vector<std::string> keys = kind.Keys;
    if (kind.Id == MessageKindId::Question)
        keys.insert(keys.end(), {"V1", "V2", "V3"});

    switch (kind.Wait) {
    case ReaderWait::None:
        for (const std::string& key : keys)
            values[key] = Read(kind, key, "", path);
        break;
    case ReaderWait::RepeatUntilNotMinusOne:
    case ReaderWait::RepeatWhileFail:
    case ReaderWait::RepeatCommitUntilNotEmpty:
    case ReaderWait::RepeatCommitUntil100: {
        const std::string_view defaultValue = kind.Wait == ReaderWait::RepeatWhileFail            ? "FAIL"
                                              : kind.Wait == ReaderWait::RepeatCommitUntilNotEmpty ? ""
                                                                                                   : "-1";
        const auto done = [&](const std::string& value) {
            if (kind.Wait == ReaderWait::RepeatCommitUntil100)
                return value == "100";
            return value != defaultValue;
        };
        for (const std::string& key : kind.WaitKeys) {
            std::string value = Read(kind, key, defaultValue, path);
            while (!done(value)) {
                wait50();
                value = Read(kind, key, defaultValue, path);
            }
            values[key] = value;
        }
        for (const std::string& key : keys)
            if (!Contains(kind.WaitKeys, key))
                values[key] = Read(kind, key, "-1", path);
        break;
    }
    case ReaderWait::RepeatAllUntilCommit100:
        for (;;) {
            for (const std::string& key : keys)
                values[key] = Read(kind, key, "-1", path);
            if (values[kind.WaitKeys.front()] == "100")
                break;
            wait50();
        }
        break;
    case ReaderWait::ReadOnceOwnDefault:
        for (const std::string& key : keys)
            values[key] = Read(kind, key, ownDefault, path);
        break;
    case ReaderWait::ReadOncePositionDefault:
        for (std::size_t i = 0; i < keys.size(); ++i)
            values[keys[i]] = Read(kind, keys[i], std::to_string(i + 1), path);
        break;
    }
    return values;
}

} // namespace vk

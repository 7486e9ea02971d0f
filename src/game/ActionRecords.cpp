#include "game/ActionRecords.h"

#include "game/PositionDigest.h"
#include "game/ProfileValues.h"
#include "link/MessageKinds.h"
#include "link/ProfileFile.h"
#include "shell/RunTimeFault.h"

namespace vk {

namespace {

// The actions of a turn by the phase they are done in.
constexpr std::array<ActionPhase, 10> kActionPhases{{
    {7, 9, 1, 0, true},
    {8, 9, 1, 0, false},
    {12, 27, 2, 1, true},
    {13, 27, 2, 1, false},
    {16, 18, 2, 0, true},
    {17, 18, 2, 0, false},
    {21, 27, 1, 1, true},
    {22, 27, 1, 1, false},
    {25, 27, 3, 0, true},
    {26, 27, 3, 0, false},
}};

const MessageKind& Kind(MessageKindId id)
{
    return KindOf(id);
}

int ReadInt(const std::filesystem::path& path, MessageKindId id, const std::string& key)
{
    return ProfileInt(ReadProfileString(Kind(id).Section, key, "-1", path), key);
}

std::string Number(int value)
{
    return std::to_string(value);
}

std::size_t Index(int index)
{
    return static_cast<std::size_t>(CheckIndex(index, 0, 1, "ActionRecord"));
}

} // namespace

void ClearActionRecord(ActionRecord& record)
{
    record = ActionRecord{};
}

void ClearSecondAction(ActionRecord& record)
{
    record.ActVeh[1] = -1;
    record.ActCode[1] = -1;
    record.ActFrom[1] = -1;
    record.ActTo[1] = -1;
}

void SetFlagLoadCode(ActionRecord& record)
{
    record.ActCode[0] = kActMoveLoadFlag;
}

std::optional<ActionPhase> FindActionPhase(int phase)
{
    for (const ActionPhase& entry : kActionPhases)
        if (entry.Phase == phase)
            return entry;
    return std::nullopt;
}

ActionMessage MakeActionMessage(const ActionRecord& record, int index, int diceCode, int heading,
                                const std::string& vehicleTag)
{
    const std::size_t i = Index(index);
    ActionMessage message;
    message.Direct = heading;
    message.Dice = diceCode;
    message.Veh = record.ActVeh[i];
    message.Act = record.ActCode[i];
    message.From = record.ActFrom[i];
    message.To = record.ActTo[i];
    message.VehTag = vehicleTag;
    return message;
}

bool WriteRollRecord(const std::filesystem::path& path, int dice1, int dice2)
{
    const MessageKind& kind = Kind(MessageKindId::DiceResult);
    return WriteMessage(kind, InKeyOrder(kind, {Number(dice1), Number(dice2)}), path.string());
}

KeyValues EndOfTurnRecordKeys(int turnNumber, const std::string& digest)
{
    KeyValues keys;
    if (!digest.empty())
        keys.emplace_back("HASH", digest);
    keys.emplace_back("TURN", Number(turnNumber));
    return keys;
}

bool WriteEndOfTurnRecord(const std::filesystem::path& path, int turnNumber, const std::string& digest)
{
    return WriteMessage(Kind(MessageKindId::EndOfTurn), EndOfTurnRecordKeys(turnNumber, digest), path.string());
}

KeyValues ActionRecordKeys(const ActionMessage& message, int phase)
{
    const MessageKind& kind = Kind(MessageKindId::Action);
    KeyValues keys = InKeyOrder(kind, {Number(message.Direct), Number(message.Dice), Number(message.Veh),
                                       Number(message.Act), Number(message.From), Number(message.To),
                                       message.VehTag});
    // The record of phase 8 writes VEH before DICE.
    if (phase == 8)
        std::swap(keys[1], keys[2]);
    return keys;
}

bool WriteActionRecord(const std::filesystem::path& path, const ActionMessage& message, int phase)
{
    return WriteMessage(Kind(MessageKindId::Action), ActionRecordKeys(message, phase), path.string());
}

RollMessage ReadRollRecord(const std::filesystem::path& path)
{
    const std::vector<std::string>& keys = Kind(MessageKindId::DiceResult).Keys;
    RollMessage roll;
    roll.D1 = ReadInt(path, MessageKindId::DiceResult, keys[0]);
    roll.D2 = ReadInt(path, MessageKindId::DiceResult, keys[1]);
    return roll;
}

int ReadEndOfTurnRecord(const std::filesystem::path& path)
{
    return ReadInt(path, MessageKindId::EndOfTurn, "TURN");
}

EndOfTurnMessage EndOfTurnMessageFrom(const MessageValues& values)
{
    EndOfTurnMessage message;
    const auto turn = values.find("TURN");
    message.Turn = ProfileInt(turn == values.end() ? "-1" : turn->second, "TURN");
    if (const auto hash = values.find("HASH"); hash != values.end() && IsPositionDigest(hash->second))
        message.Digest = hash->second;
    return message;
}

EndOfTurnMessage ReadEndOfTurnMessage(const std::filesystem::path& path)
{
    const MessageKind& kind = Kind(MessageKindId::EndOfTurn);
    MessageValues values;
    for (const std::string& key : kind.Keys)
        values[key] = ReadProfileString(kind.Section, key, "-1", path);
    return EndOfTurnMessageFrom(values);
}

ActionMessage ActionMessageFrom(const MessageValues& values)
{
    const auto number = [&](const char* key) {
        const auto found = values.find(key);
        return ProfileInt(found == values.end() ? "-1" : found->second, key);
    };
    ActionMessage message;
    const auto tag = values.find("VEHTAG");
    message.VehTag = tag == values.end() ? std::string() : tag->second;
    message.Direct = number("DIRECT");
    message.Dice = number("DICE");
    message.Veh = number("VEH");
    message.Act = number("ACT");
    message.From = number("FROM");
    message.To = number("TO");
    return message;
}

ActionMessage ReadActionRecord(const std::filesystem::path& path)
{
    const MessageKind& kind = Kind(MessageKindId::Action);
    MessageValues values;
    for (const std::string& key : kind.Keys)
        values[key] = ReadProfileString(kind.Section, key, key == "VEHTAG" ? "" : "-1", path);
    return ActionMessageFrom(values);
}

void StoreReceivedAction(ActionRecord& record, const ActionMessage& message)
{
    record.ActVeh[0] = message.Veh;
    record.ActCode[0] = message.Act;
    record.ActFrom[0] = message.From;
    record.ActTo[0] = message.To;
}


std::vector<ActionLogLine> LogActionLines(const ActionRecord& record, int diceCode, bool fromCamp)
{
    const std::string separator(48, '-');
    const int slot = record.ActVeh[0];
    const int code = record.ActCode[0];
    const int from = record.ActFrom[0];
    const int to = record.ActTo[0];

    std::vector<ActionLogLine> lines;
    lines.push_back({separator, false});
    lines.push_back({"I take action with following details at ", true});
    if (diceCode == kDiceLeft)
        lines.push_back({"using dice 1", false});
    else if (diceCode == kDiceRight)
        lines.push_back({"using dice 2", false});
    else if (diceCode == kDiceBoth)
        lines.push_back({"using both dices", false});

    if (code == kActInterceptedShot) {
        lines.push_back({"attacking jeep, but was intercepted by opponent", false});
    } else {
        const bool shot = code == kActShot;
        const char* word = nullptr;
        if (slot == 0)
            word = "tank";
        else if (slot == 1 || slot == 2)
            word = "canon";
        else if (slot >= 3 && slot <= 5)
            word = "infantry";
        else if (slot == 6 || slot == 7)
            word = "commando";
        else if (slot == 8 || slot == 9)
            word = "deminer";
        if (word)
            lines.push_back({std::string(shot ? "shooting with " : "moving ") + word, false});
        else if (slot == 10)
            lines.push_back({"moving jeep", false});
    }

    lines.push_back({fromCamp ? std::string("from main camp") : "from " + std::to_string(from), false});

    if (to == 2 || to == 69)
        lines.push_back({"to RESERVE", false});
    else if (to == 113 || to == 116)
        lines.push_back({"to main camp", false});
    else if (to == 114 || to == 117)
        lines.push_back({"to HQ", false});
    else if (to == 115 || to == 118)
        lines.push_back({"to prison island", false});
    else if (code == kActShot)
        lines.push_back({"to vehicle at " + std::to_string(to), false});
    else
        lines.push_back({"to " + std::to_string(to), false});

    if (code == kActMoveLeaveMine)
        lines.push_back({"leaves mine at " + std::to_string(from), false});
    else if (code == kActMovePickUpMine)
        lines.push_back({"to pick up mine", false});
    else if (code == kActMoveLoadFlag)
        lines.push_back({"loading flag", false});

    lines.push_back({separator, false});
    return lines;
}

} // namespace vk

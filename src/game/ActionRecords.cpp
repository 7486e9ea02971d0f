#include "game/ActionRecords.h"

#include "game/ProfileValues.h"
#include "link/ProfileFile.h"
#include "shell/RunTimeFault.h"

namespace vk {

namespace {

constexpr const char* kSection = "GENERAL";

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

bool WriteInt(const std::filesystem::path& path, const char* key, int value)
{
    return WriteProfileString(kSection, key, std::to_string(value), path);
}

int ReadInt(const std::filesystem::path& path, const char* key)
{
    return ProfileInt(ReadProfileString(kSection, key, "-1", path), key);
}

std::size_t Index(int index)
{
    return static_cast<std::size_t>(CheckIndex(index, 0, 1, "ActionRecord"));
}

// Val of one character of the tag, counted from 1: 0 past the end or for a non-digit.
int DigitAt(const std::string& tag, std::size_t position)
{
    if (position > tag.size())
        return 0;
    const char c = tag[position - 1];
    return (c >= '0' && c <= '9') ? c - '0' : 0;
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
    bool written = WriteInt(path, "D1", dice1);
    written = WriteInt(path, "D2", dice2) && written;
    return written;
}

bool WriteEndOfTurnRecord(const std::filesystem::path& path, int turnNumber)
{
    return WriteInt(path, "TURN", turnNumber);
}

bool WriteActionRecord(const std::filesystem::path& path, const ActionMessage& message, int phase)
{
    bool written = WriteInt(path, "DIRECT", message.Direct);
    if (phase == 8) {
        written = WriteInt(path, "VEH", message.Veh) && written;
        written = WriteInt(path, "DICE", message.Dice) && written;
    } else {
        written = WriteInt(path, "DICE", message.Dice) && written;
        written = WriteInt(path, "VEH", message.Veh) && written;
    }
    written = WriteInt(path, "ACT", message.Act) && written;
    written = WriteInt(path, "FROM", message.From) && written;
    written = WriteInt(path, "TO", message.To) && written;
    written = WriteProfileString(kSection, "VEHTAG", message.VehTag, path) && written;
    return written;
}

RollMessage ReadRollRecord(const std::filesystem::path& path)
{
    RollMessage roll;
    roll.D1 = ReadInt(path, "D1");
    roll.D2 = ReadInt(path, "D2");
    return roll;
}

int ReadEndOfTurnRecord(const std::filesystem::path& path)
{
    return ReadInt(path, "TURN");
}

ActionMessage ReadActionRecord(const std::filesystem::path& path)
{
    ActionMessage message;
    message.VehTag = ReadProfileString(kSection, "VEHTAG", "", path);
    message.Direct = ReadInt(path, "DIRECT");
    message.Dice = ReadInt(path, "DICE");
    message.Veh = ReadInt(path, "VEH");
    message.Act = ReadInt(path, "ACT");
    message.From = ReadInt(path, "FROM");
    message.To = ReadInt(path, "TO");
    return message;
}

void StoreReceivedAction(ActionRecord& record, const ActionMessage& message)
{
    record.ActVeh[0] = message.Veh;
    record.ActCode[0] = message.Act;
    record.ActFrom[0] = message.From;
    record.ActTo[0] = message.To;
}

CampVehicleLoad ReadCampVehicleTag(int slot, const std::string& vehicleTag)
{
    CampVehicleLoad load;
    switch (CheckIndex(slot, 0, 10, "VehicleSlot")) {
    case 0:
    case 10:
        load.Companies = DigitAt(vehicleTag, 8);
        break;
    case 1:
    case 2:
    case 8:
    case 9:
        load.Companies = DigitAt(vehicleTag, 9);
        break;
    case 3:
    case 4:
    case 5:
        load.Companies = DigitAt(vehicleTag, 14);
        break;
    default: // 6, 7
        load.Companies = DigitAt(vehicleTag, 12);
        load.MineAboard = vehicleTag.size() >= 14 && vehicleTag[13] == '1';
        break;
    }
    return load;
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

#include "game/ScriptedDice.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace vk {

namespace {

struct Script {
    std::vector<int> Values;
    std::size_t Next = 0;
};

Script& Dice()
{
    static Script script = [] {
        Script read;
        const char* text = std::getenv("VALKENHORN_DICE");
        std::stringstream list(text ? text : "");
        std::string item;
        while (std::getline(list, item, ',')) {
            const int value = std::atoi(item.c_str());
            if (value >= 1 && value <= 6)
                read.Values.push_back(value);
        }
        return read;
    }();
    return script;
}

} // namespace

std::optional<int> NextScriptedDie()
{
    Script& script = Dice();
    if (script.Next >= script.Values.size())
        return std::nullopt;
    return script.Values[script.Next++];
}

bool DiceScripted()
{
    return !Dice().Values.empty();
}

} // namespace vk

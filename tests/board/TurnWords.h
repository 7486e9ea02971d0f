#pragma once

// The words of the turn that a destination click reads and writes, and the
// player's answers to its questions, for the tests of the board clicks.

#include "board/Picking.h"

#include <array>

namespace vk::testing {

// ActVeh, ActCode, ActFrom of a turn, all -1 as after the dice were rolled.
struct TurnWords {
    std::array<int, 2> veh{-1, -1};
    std::array<int, 2> code{-1, -1};
    std::array<int, 2> from{-1, -1};
    ActionWords Words() { return ActionWords{veh, code, from}; }
};

// The player's answers, and how often each question was put.
struct Answers {
    bool loadFlag = true;
    bool leaveMine = true;
    int flagAsked = 0;
    int mineAsked = 0;
    DestinationQuestions Questions()
    {
        return DestinationQuestions{[this] {
                                        ++flagAsked;
                                        return loadFlag;
                                    },
                                    [this] {
                                        ++mineAsked;
                                        return leaveMine;
                                    }};
    }
};

// The state with the verdict of another: a refused or undone click may only
// have changed the verdict of the judge.
inline BoardState WithVerdictOf(BoardState state, const BoardState& other)
{
    state.Verdict = other.Verdict;
    return state;
}

} // namespace vk::testing

#pragma once

#include "board/BoardState.h"

namespace vk {

// One destination click of the local player of `side` on the board, carried
// out the way the board's double-click handler does it, with no questions
// asked: a flag is loaded whenever the verdict offers one, and a mine is laid
// when `leaveMine` is asked for and the handler would have asked about it.
struct BoardClickOutcome {
    enum class Kind {
        Nothing,       // illegal, or a move of an army without fuel: the position stands
        SentToHQ,      // a camp vehicle put on the first free place of its own HQ
        Moved,         // ExecuteMove
        Shot,          // ResolveShot
    };
    Kind What = Kind::Nothing;
    int ActCode = -1;  // 1 move, 2 shot, 3 mine left, 4 mine picked up, 5 flag loaded
};

// The click: the verdict of IsLegalMove stands in state.Verdict afterwards
// (for a camp vehicle sent to its HQ too, which is not judged by it).
//   from the own camp to the own HQ: the vehicle is sent to the HQ while it
//     holds fewer than 3 and the army has fuel (a camp vehicle can't be
//     picked without), without ExecuteMove, whatever the judge says;
//   a legal shot: ResolveShot on the target, also without fuel;
//   a legal move: ExecuteMove, unless the army's fuel is blocked.
BoardClickOutcome ApplyBoardClick(BoardState& state, int side, int slot, int from, int to, int steps, bool mayShoot,
                                  bool leaveMine);

} // namespace vk

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace vk {

// The command-line judge over the rules library:
//
//   valkenhorn-rules judge GAME.vkh SIDE SLOT FROM TO STEPS MAYSHOOT
//                          [--apply OUT.vkh [--leave-mine]]
//
// reads the position of a saved game, judges the move of vehicle SLOT of army
// SIDE with IsLegalMove and prints the verdict as the lines Legal=,
// ShootAllowed=, ShootTarget=, MinePickup=, FlagLoad=, CompassCrossed=,
// Heading= (flags -1 and 0). With --apply it carries the click out for the
// local player of SIDE, writes the position after it to OUT.vkh in the same
// format and prints PendingDraws=.
//
//   valkenhorn-rules centre FIELD BOARDSIDE
//
// prints "X Y", the point in twips on the board where a click hits field
// FIELD in the view of BOARDSIDE (the middle of its hit rectangle, mirrored
// for view 2), as the game itself aims a double click on a vehicle or mine.
//
// Exit codes: 0 done (legal or not), 2 a bad file or argument (one line on
// the error stream), 3 a fault of the rules.
int RunRulesTool(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace vk

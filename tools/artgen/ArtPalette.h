#pragma once

#include <QColor>

// The colours shared by every picture of the program, so that the board, the
// vehicles, the mines and the cards belong together.
namespace vk::art {

constexpr int kTwipsPerPixel = 15;

inline QColor ArmyColour(int side) { return side == 1 ? QColor(70, 128, 46) : QColor(150, 92, 40); }
inline QColor ArmyDark(int side) { return side == 1 ? QColor(28, 64, 20) : QColor(78, 44, 16); }
inline QColor ArmyLight(int side) { return side == 1 ? QColor(168, 214, 128) : QColor(232, 186, 130); }
inline QColor ArmyTint(int side) { return side == 1 ? QColor(196, 214, 150) : QColor(222, 196, 150); }

inline QColor SeaDeep() { return QColor(38, 92, 150); }
inline QColor SeaShallow() { return QColor(86, 150, 196); }
inline QColor Beach() { return QColor(228, 212, 160); }
inline QColor Land() { return QColor(206, 206, 150); }
inline QColor RoadTile() { return QColor(112, 110, 104); }
inline QColor RoadJoint() { return QColor(70, 68, 64); }
inline QColor RoadEdge() { return QColor(40, 38, 36); }
inline QColor FlagYellow() { return QColor(250, 214, 40); }
inline QColor FlagRed() { return QColor(200, 30, 30); }
inline QColor MineBody() { return QColor(36, 36, 40); }
inline QColor Ink() { return QColor(24, 22, 20); }
inline QColor Paper() { return QColor(250, 246, 232); }

}  // namespace vk::art

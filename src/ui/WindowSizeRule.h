#pragma once

// The rule that the resize event of the main window applies: a maximised
// window must be at least 25545 x 13800 twips, a normal one is held to the
// splash size until MinWidth and MinHeight are set, and to at least those
// bounds afterwards.

namespace vk {

constexpr int MinWindowWidth = 25545;
constexpr int MinWindowHeight = 13800;
constexpr int SplashWindowWidth = 11875;
constexpr int SplashWindowHeight = 6310;

enum class WindowShowState { Normal, Minimised, Maximised };

struct WindowSizeVerdict {
    bool screenTooSmall = false;   // maximised and below the bounds: the program ends
    bool resize = false;           // normal: the window takes width and height
    int width = 0;
    int height = 0;
};

WindowSizeVerdict ApplyWindowSizeRule(WindowShowState state, int width, int height, int minWidth, int minHeight);

} // namespace vk

#include "ui/WindowSizeRule.h"

namespace vk {

WindowSizeVerdict ApplyWindowSizeRule(WindowShowState state, int width, int height, int minWidth, int minHeight)
{
    WindowSizeVerdict verdict;
    switch (state) {
    case WindowShowState::Maximised:
        verdict.screenTooSmall = width < MinWindowWidth || height < MinWindowHeight;
        break;
    case WindowShowState::Normal:
        // MinWidth and MinHeight act as switches; the bounds are the constants.
        verdict.width = minWidth != 0 ? (width < MinWindowWidth ? MinWindowWidth : width) : SplashWindowWidth;
        verdict.height = minHeight != 0 ? (height < MinWindowHeight ? MinWindowHeight : height) : SplashWindowHeight;
        verdict.resize = verdict.width != width || verdict.height != height;
        break;
    case WindowShowState::Minimised:
        break;
    }
    return verdict;
}

} // namespace vk

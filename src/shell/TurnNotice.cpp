#include "shell/TurnNotice.h"

#include "ui/Hoofdvenster.h"

#include <QApplication>

namespace vk {

void TellPlayer(Hoofdvenster& w, Notice)
{
    if (w.isActiveWindow())
        return;
    // The window asks for attention (a blinking task bar entry).
    QApplication::alert(&w);
}

} // namespace vk

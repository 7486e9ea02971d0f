#include "ui/MessageBoard.h"

#include "shell/Global.h"

namespace vk {

QString FormatBoardText(const QString& text)
{
    QString result = QStringLiteral(" * * * * * * * * * * ");
    for (const QChar c : text) {
        if (c == QLatin1Char(' '))
            result += QStringLiteral("   ");
        else {
            result += c;
            result += QLatin1Char(' ');
        }
    }
    result += QStringLiteral("* * * * * * * * * *");
    // Character by character, so that the text keeps its length (a sharp s stays one letter).
    for (QChar& c : result)
        c = c.toUpper();
    return result;
}

ScrollStep ScrollOnce(QString& boardText, bool labelVisible)
{
    ScrollStep step;
    if (boardText.isEmpty()) {
        step.hide = true;
        return step;
    }
    if (!labelVisible) {
        step.show = true;
        step.playSound = true;
    }
    boardText = boardText.mid(1) + boardText.left(1);
    step.caption = boardText;
    return step;
}

void ShowOnBoard(const QString& text)
{
    Global().BoardText = FormatBoardText(text);
}

void ClearBoard()
{
    Global().BoardText.clear();
}

} // namespace vk

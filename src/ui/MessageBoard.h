#pragma once

// The message board: one running text (Global().BoardText) that rotates by one
// character at each firing of Scroll_Timer on the label msgBoard.

#include <QString>

namespace vk {

// Prepares a message for the board: ten stars, every character set apart
// (a blank becomes three blanks), ten stars, all in upper case.
QString FormatBoardText(const QString& text);

// Shows a message: BoardText becomes the formatted text, replacing any other.
void ShowOnBoard(const QString& text);
// Hides the board: BoardText becomes empty.
void ClearBoard();

// What one firing of the scroll timer does to the label.
struct ScrollStep {
    bool hide = false;        // the text is empty: hide the label, nothing else
    bool show = false;        // the label was hidden: show it ...
    bool playSound = false;   // ... and announce the message
    QString caption;          // the label's new caption when not hiding
};

// One firing of Timer_Scroll: rotates boardText by one character in place.
ScrollStep ScrollOnce(QString& boardText, bool labelVisible);

} // namespace vk

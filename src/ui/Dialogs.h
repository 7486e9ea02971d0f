#pragma once

// The modal dialogs of the program: message boxes with Dutch buttons, the
// folder picker and modal forms. Each runs its own event loop, so timers and
// events go on while it is open. The open dialogs are kept in a stack so that
// the automation interface can read and answer the innermost one.

#include <QString>
#include <QStringList>

class QDialog;
class QWidget;

namespace vk {

enum class BoxIcon { None, Stop, Warning, Information, Question };
enum class BoxButtons { Ok, YesNo };
enum class BoxResult { Ok, Yes, No };

// A message box; with an empty title the box shows the program's title.
BoxResult MessageBox(const QString& text, BoxButtons buttons = BoxButtons::Ok, BoxIcon icon = BoxIcon::None,
                     const QString& title = QString());

// A question box with Yes and No; true for Yes.
bool AskYesNo(const QString& text, const QString& title);

// The folder picker; returns the chosen folder, or an empty text on cancel.
QString AskFolder(const QString& title, const QString& startFolder = QString());

// Runs a modal form of our own (such as the dialog to remove a folder) with
// the same bookkeeping; returns QDialog::exec's result.
int RunModalForm(QDialog* form);

// The window that dialogs are centred on.
void SetDialogParent(QWidget* parent);

struct OpenDialog {
    QString kind;          // "message", "folder" or "form"
    QString title;
    QString text;
    QStringList buttons;   // "ok", "yes", "no"
    QDialog* dialog = nullptr;
};

// The innermost open dialog, or nullptr.
const OpenDialog* CurrentDialog();

// Presses a button ("ok", "yes", "no") of the innermost message box. Returns
// an error text, empty on success.
QString AnswerDialog(const QString& button);

// Picks a folder in the open folder picker (an empty path cancels). Returns an
// error text, empty on success.
QString AnswerFolderDialog(const QString& path);

} // namespace vk

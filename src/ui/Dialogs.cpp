#include "ui/Dialogs.h"

#include "shell/Global.h"

#include <QAbstractButton>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <vector>

namespace vk {

namespace {

std::vector<OpenDialog>& OpenDialogs()
{
    static std::vector<OpenDialog> dialogs;
    return dialogs;
}

QPointer<QWidget>& DialogParent()
{
    static QPointer<QWidget> parent;
    return parent;
}

// Keeps a dialog on the stack for as long as it runs.
class OpenDialogScope {
public:
    explicit OpenDialogScope(OpenDialog entry) { OpenDialogs().push_back(std::move(entry)); }
    ~OpenDialogScope() { OpenDialogs().pop_back(); }
    OpenDialogScope(const OpenDialogScope&) = delete;
    OpenDialogScope& operator=(const OpenDialogScope&) = delete;
};

QMessageBox::Icon ToQtIcon(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Stop: return QMessageBox::Critical;
    case BoxIcon::Warning: return QMessageBox::Warning;
    case BoxIcon::Information: return QMessageBox::Information;
    case BoxIcon::Question: return QMessageBox::Question;
    case BoxIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void SetDialogParent(QWidget* parent)
{
    DialogParent() = parent;
}

BoxResult MessageBox(const QString& text, BoxButtons buttons, BoxIcon icon, const QString& title)
{
    QWidget* parent = DialogParent() && DialogParent()->isVisible() ? DialogParent().data() : nullptr;
    QMessageBox box(parent);
    box.setWindowTitle(title.isEmpty() ? Global().AppTitle : title);
    box.setText(text);
    box.setIcon(ToQtIcon(icon));
    box.setTextFormat(Qt::PlainText);
    box.setWindowModality(Qt::ApplicationModal);

    OpenDialog entry;
    entry.kind = QStringLiteral("message");
    entry.title = box.windowTitle();
    entry.text = text;
    entry.dialog = &box;

    QAbstractButton* yes = nullptr;
    QAbstractButton* no = nullptr;
    QAbstractButton* ok = nullptr;
    if (buttons == BoxButtons::YesNo) {
        yes = box.addButton(QStringLiteral("Ja"), QMessageBox::YesRole);
        no = box.addButton(QStringLiteral("Nee"), QMessageBox::NoRole);
        box.setDefaultButton(static_cast<QPushButton*>(yes));
        entry.buttons = {QStringLiteral("yes"), QStringLiteral("no")};
    } else {
        ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box.setDefaultButton(static_cast<QPushButton*>(ok));
        box.setEscapeButton(ok);
        entry.buttons = {QStringLiteral("ok")};
    }
    box.setProperty("vkYes", QVariant::fromValue(static_cast<QObject*>(yes)));
    box.setProperty("vkNo", QVariant::fromValue(static_cast<QObject*>(no)));
    box.setProperty("vkOk", QVariant::fromValue(static_cast<QObject*>(ok)));

    OpenDialogScope scope(entry);
    box.exec();
    if (buttons == BoxButtons::YesNo)
        return box.clickedButton() == yes ? BoxResult::Yes : BoxResult::No;
    return BoxResult::Ok;
}

bool AskYesNo(const QString& text, const QString& title)
{
    return MessageBox(text, BoxButtons::YesNo, BoxIcon::Question, title) == BoxResult::Yes;
}

QString AskFolder(const QString& title, const QString& startFolder)
{
    QWidget* parent = DialogParent() && DialogParent()->isVisible() ? DialogParent().data() : nullptr;
    QFileDialog dialog(parent, title, startFolder);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    // Qt's own dialog, so that it runs in our event loop and can be answered by the automation interface.
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setWindowModality(Qt::ApplicationModal);

    OpenDialog entry;
    entry.kind = QStringLiteral("folder");
    entry.title = title;
    entry.buttons = {QStringLiteral("ok"), QStringLiteral("cancel")};
    entry.dialog = &dialog;
    OpenDialogScope scope(entry);
    if (dialog.exec() != QDialog::Accepted)
        return QString();
    const QVariant answered = dialog.property("vkAnswer");
    if (answered.isValid())
        return answered.toString();
    const QStringList chosen = dialog.selectedFiles();
    return chosen.isEmpty() ? QString() : chosen.first();
}

int RunModalForm(QDialog* form)
{
    OpenDialog entry;
    entry.kind = QStringLiteral("form");
    entry.title = form->windowTitle();
    entry.dialog = form;
    form->setWindowModality(Qt::ApplicationModal);
    OpenDialogScope scope(entry);
    return form->exec();
}

const OpenDialog* CurrentDialog()
{
    return OpenDialogs().empty() ? nullptr : &OpenDialogs().back();
}

QString AnswerDialog(const QString& button)
{
    const OpenDialog* open = CurrentDialog();
    if (!open)
        return QStringLiteral("no dialog is open");
    if (open->kind != QLatin1String("message"))
        return QStringLiteral("the open dialog is not a message box");
    if (!open->buttons.contains(button))
        return QStringLiteral("the message box has no button ") + button;
    const char* property = button == QLatin1String("yes") ? "vkYes" : button == QLatin1String("no") ? "vkNo" : "vkOk";
    QPointer<QAbstractButton> target = qobject_cast<QAbstractButton*>(open->dialog->property(property).value<QObject*>());
    if (!target)
        return QStringLiteral("the message box has no button ") + button;
    // Pressed after the reply has gone out: the code after the box may run for long.
    QTimer::singleShot(0, target, [target] {
        if (target)
            target->click();
    });
    return QString();
}

QString AnswerFolderDialog(const QString& path)
{
    const OpenDialog* open = CurrentDialog();
    if (!open)
        return QStringLiteral("no dialog is open");
    if (open->kind != QLatin1String("folder"))
        return QStringLiteral("the open dialog is not a folder picker");
    QPointer<QFileDialog> dialog = qobject_cast<QFileDialog*>(open->dialog);
    if (!dialog)
        return QStringLiteral("the open dialog is not a folder picker");
    QTimer::singleShot(0, dialog, [dialog, path] {
        if (!dialog)
            return;
        if (path.isEmpty()) {
            dialog->reject();
        } else {
            dialog->setProperty("vkAnswer", path);
            QDialog* asDialog = dialog;
            asDialog->QDialog::done(QDialog::Accepted);
        }
    });
    return QString();
}

} // namespace vk

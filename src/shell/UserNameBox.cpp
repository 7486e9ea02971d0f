#include "shell/UserNameBox.h"

#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/Settings.h"
#include "shell/UserNameFilter.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

const QString Placeholder = QStringLiteral("je_naam");

} // namespace

void User_Name_GotFocus(Hoofdvenster& w)
{
    if (w.User_Name->Caption() == Placeholder)
        w.User_Name->SetCaption(QString());
    else
        w.User_Name->selectAll();
}

void User_Name_KeyPress(Hoofdvenster& w, int& keyAscii)
{
    switch (ClassifyUserNameKey(keyAscii)) {
    case UserNameKey::Refused:
        keyAscii = 0;
        break;
    case UserNameKey::Enter:
        // Moving the focus away commits the name through the lost focus.
        w.frExtern->SetEnabled(true);
        w.User_Name->MoveFocusTo(w.Cmd_AddFolder);
        break;
    case UserNameKey::PassedOn:
    case UserNameKey::Accepted:
        break;
    }
}

void User_Name_LostFocus(Hoofdvenster& w)
{
    GlobalValues& g = Global();
    const QString t = w.User_Name->Caption();

    if (t.isEmpty()) {
        w.User_Name->SetCaption(g.LocalUser.isEmpty() ? Placeholder : g.LocalUser);
        return;
    }
    if (t == Placeholder) {
        if (!g.LocalUser.isEmpty())
            w.User_Name->SetCaption(g.LocalUser);
        return;
    }
    if (t == g.LocalUser)
        return;

    for (int i = 1; i <= g.ExtUsersCount; ++i) {
        if (t.toLower() == ExternalUserAt(i).toLower()) {
            Speel(*w.ESound1, w.V.Sound, SoundMessage);
            MessageBox(QStringLiteral("Deze naam is in gebruik door \u00e9\u00e9n van de externe spelers,\n\r"
                                      "gelieve een andere naam te gebruiken..."),
                       BoxButtons::Ok, BoxIcon::Warning, QStringLiteral("Naam in gebruik"));
            w.User_Name->SetCaption(g.LocalUser.isEmpty() ? Placeholder : g.LocalUser);
            return;
        }
    }

    // A new name takes the player off-line; the old presence files stay
    // until the opponents delete them.
    if (!g.LocalUser.isEmpty()) {
        g.OldLocalUser = g.LocalUser;
        SaveSetting(QStringLiteral("OldLocalUser"), g.OldLocalUser);
    }
    g.LocalUser = t;
    SaveSetting(QStringLiteral("LocalUser"), g.LocalUser);
    w.ShareStatus->SetEnabled(true);
    w.ShareStatus->SetValue(0);
    w.User_Name->SetBackColor(Red);
}

void ShareStatus_Click(Hoofdvenster& w)
{
    // The colours are right and the two log texts exchanged; the texts are
    // part of the log's format and stay so.
    if (w.ShareStatus->Value() == 0) {
        LogAt(QStringLiteral("switch on-line status on at "));
        w.User_Name->SetBackColor(Red);
    } else {
        LogAt(QStringLiteral("switch on-line status off at "));
        w.User_Name->SetBackColor(Green);
    }
}

} // namespace vk

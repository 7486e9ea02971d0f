#include "game/StopGame.h"

#include "game/GameFiles.h"
#include "game/SavedGame.h"
#include "link/SharedFolderFiles.h"
#include "shell/Global.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <QFile>

namespace vk {

namespace {

void StopRunningGame(Hoofdvenster& w)
{
    GlobalValues& g = Global();
    Speel(*w.ESound1, w.V.Sound, SoundMessage);
    if (MessageBox(QStringLiteral("Bent u zeker dat u het huidig spel wilt stoppen?"), BoxButtons::YesNo,
                   BoxIcon::Question, QStringLiteral("Spel stoppen?")) != BoxResult::Yes)
        return;

    const QString folder = FolderAt(w.V.SelectedUser);
    const QString stopFile = MessagePath(folder, g.LocalUser, MessageKindId::GameStopped);
    if (MessageBox(QStringLiteral("Wilt u het spel bewaren om op een andere keer verder te spelen?"),
                   BoxButtons::YesNo, BoxIcon::Question, QStringLiteral("Spel Bewaren?")) == BoxResult::Yes) {
        SaveGame(QFile::encodeName(SavedGameFile(w)).toStdString(), w.V.Board, w.V.Progress);
        WaitForConsumed(w.V);
        SendMessage(stopFile, MessageKindId::GameStopped, {QStringLiteral("SAVE")});
        w.V.LastSentFile = stopFile;
    } else {
        MessageBox(QStringLiteral("U heeft het spel be\u00ebindigd zonder te bewaren, hiermee gaf je je nederlaag "
                                  "toe."),
                   BoxButtons::Ok, BoxIcon::None, QStringLiteral("U heeft verloren!"));
        SendMessage(stopFile, MessageKindId::GameStopped, {QStringLiteral("LOSE")});
        w.V.LastSentFile = stopFile;
        w.V.GameLost = true;
    }
    ClearBoard();
    w.V.GameRunning = false;
}

void ClearGameInterface(Hoofdvenster& w)
{
    ClearBoard();
    for (Control* c : std::initializer_list<Control*>{w.frDices, w.Stock, w.Homers, w.KampComp[0], w.KampComp[1],
                                                      w.Gevang_1, w.Gevang_2})
        c->SetVisible(false);
    for (ImageControl* v : w.Voertuig_1)
        v->SetVisible(false);
    for (ImageControl* v : w.Voertuig_2)
        v->SetVisible(false);
    for (ImageControl* m : w.Mijn_1)
        m->SetVisible(false);
    for (ImageControl* m : w.Mijn_2)
        m->SetVisible(false);
    w.Vlagdekking_1->SetVisible(false);
    w.Vlagdekking_2->SetVisible(false);
    w.cmdStop->SetEnabled(false);
    w.cmdStart->SetEnabled(true);
    w.frLokaal->SetEnabled(true);
    w.cmdDisconnect->SetEnabled(true);
    w.cmdSluiten->SetEnabled(true);
}

} // namespace

void cmdStop_Click(Hoofdvenster& w)
{
    if (w.V.GameRunning)
        StopRunningGame(w);
    else
        ClearGameInterface(w);
}

} // namespace vk

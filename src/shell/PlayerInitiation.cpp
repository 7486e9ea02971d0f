#include "shell/PlayerInitiation.h"

#include "game/StopGame.h"
#include "link/PollCycle.h"
#include "link/SharedFolderFiles.h"
#include "shell/Clock.h"
#include "shell/Exit.h"
#include "shell/Global.h"
#include "shell/LocalIdentity.h"
#include "shell/RunLog.h"
#include "shell/Settings.h"
#include "ui/Hoofdvenster.h"
#include "ui/MessageBoard.h"

#include <QFile>
#include <QNetworkInterface>

namespace vk {

namespace {

std::string ReadRouteTable()
{
    QFile file(QStringLiteral("/proc/net/route"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(1 << 20).toStdString();
}

// The adapters in the system's order, as the design's management query gave
// them: IP-enabled means up, not the loopback, with an address.
std::vector<NetworkAdapter> Adapters()
{
    std::vector<NetworkAdapter> adapters;
    for (const QNetworkInterface& nic : QNetworkInterface::allInterfaces()) {
        const auto flags = nic.flags();
        NetworkAdapter adapter;
        adapter.Name = nic.name().toStdString();
        adapter.MacAddress = nic.hardwareAddress().toStdString();
        adapter.IpEnabled = flags.testFlag(QNetworkInterface::IsUp) &&
                            !flags.testFlag(QNetworkInterface::IsLoopBack) && !nic.addressEntries().isEmpty();
        adapters.push_back(adapter);
    }
    return adapters;
}

} // namespace

void Haal_WMI_Info()
{
    Global().LocalID = QString::fromStdString(
        LocalIdFromAdapters(Adapters(), InterfacesWithDefaultGateway(ReadRouteTable())));
}

void BuildLocalId(const Hoofdvenster& w)
{
    GlobalValues& g = Global();
    Haal_WMI_Info();
    if (g.LocalID.isEmpty())
        g.LocalID = QString::fromStdString(FallbackLocalId(w.V.DiceTable));
    SaveSetting(QStringLiteral("LocalID"), g.LocalID);
}

void RunPlayerInitiation(Hoofdvenster& w)
{
    GlobalValues& g = Global();

    // No external players and no selection yet.
    LogAt(QStringLiteral("Initiating extern user interface at "));
    g.ExtUsersCount = 0;
    w.V.SelectedUser = 0;
    w.Combo_ExternUsers->clear();
    w.Combo_ExternUsers->addItem(QStringLiteral("Geen Speler"));
    w.Combo_ExternUsers->SetListIndex(0);

    // The identity is built once, in the first run.
    LogAt(QStringLiteral("getting identity data of local player at "));
    g.LocalID = GetSetting(QStringLiteral("LocalID"));
    if (g.LocalID.isEmpty())
        BuildLocalId(w);

    // The player's name, and the one before a change.
    g.LocalUser = GetSetting(QStringLiteral("LocalUser"));
    g.OldLocalUser = GetSetting(QStringLiteral("OldLocalUser"));
    if (g.LocalUser.isEmpty())
        g.LocalUser = g.OldLocalUser;

    // The first run waits for the name as long as it takes.
    if (g.LocalUser.isEmpty()) {
        LogAt(QStringLiteral("asking for name local player at "));
        w.frLokaal->SetEnabled(true);
        w.ShareStatus->SetEnabled(false);
        w.ShareStatus->SetValue(0);
        ShowOnBoard(QStringLiteral("gelieve je naam (maximum 10 tekens) in te vullen in het vak 'lokale speler' "
                                   "waar momenteel 'je_naam' staat, druk daarna op de enter-toets."));
        PumpUntil([&g] { return !g.LocalUser.isEmpty(); });
        ClearBoard();
        WaitMs(1000);
    }

    // The name is known: "Aanwezig" may be ticked.
    w.ShareStatus->SetEnabled(true);
    LogAt(QStringLiteral("getting data of extern players at "));
    SaveSetting(QStringLiteral("LocalUser"), g.LocalUser);
    w.User_Name->SetCaption(g.LocalUser);
    w.frLokaal->SetEnabled(false);

    // The welcome.
    ShowOnBoard(QStringLiteral("welkom ") + g.LocalUser +
                QStringLiteral(". de gegevens van je externe spelers worden opgehaald. even geduld aub..."));

    // The list of external players and their folders.
    const int count = GetSetting(QStringLiteral("ExtUsersCount"), QStringLiteral("0")).toInt();
    g.ExtUsersCount = count;
    if (count >= 1) {
        w.Cmd_RemoveFolder->SetEnabled(true);
        ResizeExternalUsers(count);
        for (int i = 1; i <= count; ++i) {
            FolderAt(i) = GetSetting(SlotKey(i, QStringLiteral("Folder")));
            ExternalUserAt(i) = GetSetting(SlotKey(i, QStringLiteral("External_User")),
                                           SlotKey(i, QStringLiteral("ExtSpeler")));
            SetActiveAt(i, GetSetting(SlotKey(i, QStringLiteral("Active")), FlagText(false)) == FlagText(true));
            w.Combo_ExternUsers->addItem(ExternalUserAt(i));
        }
    }

    // Every start empties every shared folder; a running opponent writes
    // its presence file again at its next poll.
    for (int i = 1; i <= count; ++i)
        ClearSharedFolder(FolderAt(i));
    WatchSharedFolders();

    // Nobody is selected; the welcome stands a while.
    w.V.SelectedUser = 0;
    WaitMs(8500);
    ClearBoard();
    w.frLokaal->SetEnabled(true);
    w.frExtern->SetEnabled(true);
    WaitMs(500);

    // Where to find help.
    ShowOnBoard(QStringLiteral("veel plezier met valkenhorn! druk op 'Spelregels...' of 'Hoe verbinden?' voor "
                               "verdere instructies."));
    WaitMs(9500);
    ClearBoard();

    // No game runs yet: this only resets the interface.
    cmdStop_Click(w);

    // The polls start.
    LogAt(QStringLiteral("enabling poll timer at "));
    w.Action_Timer->SetEnabled(true);
}

} // namespace vk

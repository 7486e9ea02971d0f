#include "shell/CommandLine.h"

#include <cstdio>
#include <optional>
#include <utility>

#ifndef VALKENHORN_VERSION
#define VALKENHORN_VERSION "0"
#endif

namespace vk {

namespace {

// Qt's own options that take a value (-platform offscreen, -style=Fusion).
const QStringList& QtOptionsWithValue()
{
    static const QStringList names{
        QStringLiteral("platform"),       QStringLiteral("platformpluginpath"), QStringLiteral("platformtheme"),
        QStringLiteral("plugin"),         QStringLiteral("qwindowgeometry"),    QStringLiteral("qwindowicon"),
        QStringLiteral("qwindowtitle"),   QStringLiteral("session"),            QStringLiteral("display"),
        QStringLiteral("geometry"),       QStringLiteral("name"),               QStringLiteral("style"),
        QStringLiteral("stylesheet"),     QStringLiteral("qmljsdebugger"),
    };
    return names;
}

// Qt's own options without a value.
const QStringList& QtFlags()
{
    static const QStringList names{
        QStringLiteral("reverse"), QStringLiteral("nograb"),      QStringLiteral("dograb"),
        QStringLiteral("sync"),    QStringLiteral("widgetcount"), QStringLiteral("testability"),
    };
    return names;
}

// The option's name without its dashes ("-platform", "--platform"), and the
// value glued to it with '=', if any.
QString OptionName(const QString& argument, QString* gluedValue, bool* glued)
{
    QString name = argument.startsWith(QLatin1String("--")) ? argument.mid(2) : argument.mid(1);
    const qsizetype equals = name.indexOf(QLatin1Char('='));
    *glued = equals >= 0;
    if (*glued) {
        *gluedValue = name.mid(equals + 1);
        name.truncate(equals);
    }
    return name;
}

CommandLine Wrong(const QString& dutch, const QString& english)
{
    CommandLine line;
    line.Run = CommandLine::Mode::Wrong;
    line.Error = QStringLiteral("valkenhorn: ") + dutch + QStringLiteral(" / ") + english;
    return line;
}

void Write(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

// The options of a computer player, each with one value: --computer NAME,
// --folder PATH, --level greedy|random, --invite PLAYER, --games N, --turns N.
// Returns nothing for another argument; an empty pair once the value is
// taken; the Dutch and English errors for a missing or wrong value.
using OptionError = std::pair<QString, QString>;

std::optional<OptionError> ComputerOptionValue(const QStringList& arguments, qsizetype& i, CommandLine& line)
{
    static const QStringList names{QStringLiteral("--computer"), QStringLiteral("--folder"),
                                   QStringLiteral("--level"),    QStringLiteral("--invite"),
                                   QStringLiteral("--games"),    QStringLiteral("--turns")};
    const QString argument = arguments[i];
    if (!names.contains(argument))
        return std::nullopt;
    if (i + 1 >= arguments.size() || arguments[i + 1].isEmpty())
        return OptionError{QStringLiteral("optie %1 vraagt een waarde").arg(argument),
                           QStringLiteral("option %1 needs a value").arg(argument)};
    const QString value = arguments[++i];
    if (argument == QLatin1String("--computer")) {
        line.ComputerName = value;
    } else if (argument == QLatin1String("--folder")) {
        line.ComputerFolder = value;
    } else if (argument == QLatin1String("--invite")) {
        line.ComputerInvite = value;
    } else if (argument == QLatin1String("--games") || argument == QLatin1String("--turns")) {
        bool number = false;
        const int count = value.toInt(&number);
        const bool games = argument == QLatin1String("--games");
        if (!number || count < (games ? 0 : 1))
            return OptionError{QStringLiteral("optie %1 vraagt een getal").arg(argument),
                               QStringLiteral("option %1 needs a number").arg(argument)};
        (games ? line.ComputerGames : line.ComputerTurns) = count;
    } else if (value == QLatin1String("greedy") || value == QLatin1String("random")) {
        line.ComputerLevel = value;
    } else {
        return OptionError{QStringLiteral("optie --level is greedy of random"),
                           QStringLiteral("option --level is greedy or random")};
    }
    return OptionError{};
}

} // namespace

CommandLine ReadCommandLine(const QStringList& arguments)
{
    CommandLine line;
    bool demo = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            line.Run = CommandLine::Mode::Help;
            return line;
        }
        if (argument == QLatin1String("--version")) {
            line.Run = CommandLine::Mode::Version;
            return line;
        }
        if (argument == QLatin1String("--demo")) {
            demo = true;
            continue;
        }
        if (argument == QLatin1String("--automation")) {
            if (i + 1 >= arguments.size())
                return Wrong(QStringLiteral("optie --automation vraagt een pad (SOCKET)"),
                             QStringLiteral("option --automation needs a path (SOCKET)"));
            line.AutomationPath = arguments[++i];
            continue;
        }
        if (argument.startsWith(QLatin1String("--automation="))) {
            line.AutomationPath = argument.mid(13);
            if (line.AutomationPath.isEmpty())
                return Wrong(QStringLiteral("optie --automation vraagt een pad (SOCKET)"),
                             QStringLiteral("option --automation needs a path (SOCKET)"));
            continue;
        }
        if (const std::optional<OptionError> error = ComputerOptionValue(arguments, i, line); error) {
            if (!error->first.isEmpty())
                return Wrong(error->first, error->second);
            continue;
        }
        if (argument.size() > 1 && argument.startsWith(QLatin1Char('-'))) {
            QString value;
            bool glued = false;
            const QString name = OptionName(argument, &value, &glued);
            if (QtOptionsWithValue().contains(name)) {
                line.QtOptions << argument;
                if (!glued) {
                    if (i + 1 >= arguments.size())
                        return Wrong(QStringLiteral("optie %1 vraagt een waarde").arg(argument),
                                     QStringLiteral("option %1 needs a value").arg(argument));
                    line.QtOptions << arguments[++i];
                }
                continue;
            }
            if (!glued && QtFlags().contains(name)) {
                line.QtOptions << argument;
                continue;
            }
            return Wrong(QStringLiteral("onbekende optie '%1'").arg(argument),
                         QStringLiteral("unknown option '%1'").arg(argument));
        }
        return Wrong(QStringLiteral("onverwacht argument '%1'").arg(argument),
                     QStringLiteral("unexpected argument '%1'").arg(argument));
    }
    if (!line.ComputerName.isEmpty() || !line.ComputerFolder.isEmpty() || !line.ComputerInvite.isEmpty()) {
        if (demo)
            return Wrong(QStringLiteral("--demo en --computer gaan niet samen"),
                         QStringLiteral("--demo and --computer do not go together"));
        if (line.ComputerName.isEmpty() || line.ComputerFolder.isEmpty())
            return Wrong(QStringLiteral("--computer NAAM en --folder PAD horen samen"),
                         QStringLiteral("--computer NAME and --folder PATH go together"));
        line.Run = CommandLine::Mode::Computer;
        return line;
    }
    if (demo) {
        if (!line.AutomationPath.isEmpty())
            return Wrong(QStringLiteral("--demo en --automation gaan niet samen"),
                         QStringLiteral("--demo and --automation do not go together"));
        line.Run = CommandLine::Mode::Demo;
    }
    return line;
}

CommandLine ReadCommandLine(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return ReadCommandLine(arguments);
}

QString ProgramVersion()
{
    return QStringLiteral(VALKENHORN_VERSION);
}

QString VersionText()
{
    return QStringLiteral("valkenhorn ") + ProgramVersion();
}

QString UsageText()
{
    return QStringLiteral(
        "Gebruik: valkenhorn [--automation SOCKET | --demo | --computer NAAM --folder MAP | --help | --version]\n"
        "Usage:   valkenhorn [--automation SOCKET | --demo | --computer NAME --folder PATH | --help | --version]\n"
        "\n"
        "Zonder optie start het spel. / Without an option the game starts.\n"
        "\n"
        "  --automation SOCKET  luistert op de Unix-socket SOCKET naar opdrachten (voor tests)\n"
        "                       listens for commands on the Unix-domain socket SOCKET (for tests)\n"
        "  --demo               start twee exemplaren op dit scherm, \"Speler A\" en \"Speler B\",\n"
        "                       met een eigen tijdelijke map elk en een gedeelde map; alles wordt\n"
        "                       opgeruimd wanneer beide gesloten zijn\n"
        "                       starts two copies on this screen, \"Speler A\" and \"Speler B\",\n"
        "                       each with a temporary home of its own and one shared folder;\n"
        "                       all is removed once both have ended\n"
        "  --computer NAAM --folder MAP [--level greedy|random] [--invite SPELER]\n"
        "                       een computerspeler NAAM op de gedeelde map MAP, zonder venster;\n"
        "                       greedy speelt om te winnen, random kiest lukraak; met --invite\n"
        "                       nodigt hij SPELER uit, anders wacht hij op een uitnodiging\n"
        "                       a computer player NAME on the shared folder PATH, without a window;\n"
        "                       greedy plays to win, random picks at random; with --invite it\n"
        "                       invites PLAYER, else it waits to be invited\n"
        "  --games N            de computerspeler start N spellen en wacht dan (0: zonder einde)\n"
        "                       the computer player starts N games, then waits (0: no end)\n"
        "  --turns N            hij stopt en bewaart een spel dat beurt N bereikt (400)\n"
        "                       it stops and saves a game that reaches turn N (400)\n"
        "  --help               toont deze hulp / shows this help\n"
        "  --version            toont de versie / shows the version\n"
        "\n"
        "Qt-opties zoals -platform NAAM gaan door naar Qt. / Qt's options such as -platform NAME pass on to Qt.\n");
}

int AnswerCommandLine(const CommandLine& line)
{
    switch (line.Run) {
    case CommandLine::Mode::Help:
        Write(stdout, UsageText());
        return 0;
    case CommandLine::Mode::Version:
        Write(stdout, VersionText() + QLatin1Char('\n'));
        return 0;
    case CommandLine::Mode::Wrong:
        Write(stderr, line.Error + QStringLiteral("\nZie 'valkenhorn --help'. / See 'valkenhorn --help'.\n"));
        return 2;
    case CommandLine::Mode::Play:
    case CommandLine::Mode::Demo:
    case CommandLine::Mode::Computer:
        break;
    }
    return -1;
}

} // namespace vk

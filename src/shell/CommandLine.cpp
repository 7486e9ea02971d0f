#include "shell/CommandLine.h"

#include <cstdio>

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
        "Gebruik: valkenhorn [--automation SOCKET | --demo | --help | --version]\n"
        "Usage:   valkenhorn [--automation SOCKET | --demo | --help | --version]\n"
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
        break;
    }
    return -1;
}

} // namespace vk

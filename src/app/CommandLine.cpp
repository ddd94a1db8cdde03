#include "app/CommandLine.h"

#include "core/AppIdentity.h"
#include "i18n/Translations.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>

#include <array>
#include <cstdio>

namespace {

// The options QGuiApplication and QApplication take out of the arguments themselves;
// known here so that they are not reported as unknown. Hidden from --help.
struct QtOption
{
    const char* name;
    const char* valueName; // nullptr for a flag
};
constexpr std::array kQtGuiOptions{
    QtOption{"platform", "name"},
    QtOption{"platformpluginpath", "path"},
    QtOption{"platformtheme", "name"},
    QtOption{"plugin", "name"},
    QtOption{"qwindowgeometry", "geometry"},
    QtOption{"qwindowicon", "icon"},
    QtOption{"qwindowtitle", "title"},
    QtOption{"session", "id"},
    QtOption{"display", "display"},
    QtOption{"geometry", "geometry"},
    QtOption{"style", "style"},
    QtOption{"stylesheet", "file"},
    QtOption{"reverse", nullptr},
    QtOption{"widgetcount", nullptr},
    QtOption{"nograb", nullptr},
    QtOption{"dograb", nullptr},
};

struct Options
{
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            //% "Show this summary of the options and exit."
                            qtTrId("CommandLineHelpOption")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               //% "Show the version and exit."
                               qtTrId("CommandLineVersionOption")};
};

void setUp(QCommandLineParser& parser, const Options& options)
{
    // Qt's GUI options are single-dash words (-style), not bundles of letters.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    //% "Keeps a collection of quotes and turns one of them into an e-mail signature."
    parser.setApplicationDescription(qtTrId("CommandLineDescription"));
    parser.addOption(options.help);
    parser.addOption(options.version);
    for (const QtOption& qtOption : kQtGuiOptions) {
        QCommandLineOption option(QString::fromLatin1(qtOption.name));
        if (qtOption.valueName) {
            option.setValueName(QString::fromLatin1(qtOption.valueName));
        }
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
}

QStringList argumentsOf(int argc, char* argv[])
{
    QStringList arguments;
    for (int index = 0; index < argc; ++index) {
        arguments << QString::fromLocal8Bit(argv[index]);
    }
    return arguments;
}

void print(FILE* stream, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
}

} // namespace

std::optional<int> handleCommandLine(int argc, char* argv[])
{
    const QStringList arguments = argumentsOf(argc, argv);
    {
        // Most launches have nothing to say: decide without starting Qt at all.
        QCommandLineParser parser;
        const Options options;
        setUp(parser, options);
        if (parser.parse(arguments) && parser.positionalArguments().isEmpty() &&
            !parser.isSet(options.help) && !parser.isSet(options.version)) {
            return std::nullopt;
        }
    }

    // Something to print: a core application for the translated texts, which is gone
    // again before the program ends.
    int applicationArgc = argc;
    QCoreApplication application(applicationArgc, argv);
    QBTranslations translations;
    translations.install();
    QCommandLineParser parser;
    const Options options;
    setUp(parser, options);
    const QString program = QString::fromUtf8(qbidentity::kProcessName);
    if (!parser.parse(arguments) || !parser.positionalArguments().isEmpty()) {
        const QString error =
            parser.errorText().isEmpty()
                //% "Unexpected argument '%1'."
                ? qtTrId("CommandLineUnexpectedArgument").arg(parser.positionalArguments().first())
                : parser.errorText();
        //% "Try '%1 --help' for more information."
        print(stderr, program + QStringLiteral(": ") + error + QLatin1Char('\n') +
                          qtTrId("CommandLineTryHelp").arg(program) + QLatin1Char('\n'));
        return 1;
    }
    if (parser.isSet(options.help)) {
        print(stdout, parser.helpText());
    } else {
        print(stdout, program + QLatin1Char(' ') + QStringLiteral(QB_VERSION) + QLatin1Char('\n'));
    }
    return 0;
}

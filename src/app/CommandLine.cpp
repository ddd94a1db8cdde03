#include "app/CommandLine.h"

#include "app/SingleInstance.h"
#include "core/AppIdentity.h"
#include "i18n/Translations.h"
#include "import/QuoteFileCommands.h"
#include "logging/Log.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

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
    QCommandLineOption import{QStringLiteral("import"),
                              //% "Add the quotes of FILE to the collection, without a window."
                              qtTrId("CommandLineImportOption"), QStringLiteral("FILE")};
    QCommandLineOption separator{
        QStringLiteral("separator"),
        //% "How --import cuts text into quotes: a separator line such as \"%\", or "
        //% "\"blank\" (blank lines), \"line\" (one quote per line), \"whole\" (one quote)."
        qtTrId("CommandLineSeparatorOption"), QStringLiteral("TEXT")};
    QCommandLineOption dryRun{QStringLiteral("dry-run"),
                              //% "With --import: say how each file would be cut and how many "
                              //% "quotes it holds, and change nothing."
                              qtTrId("CommandLineDryRunOption")};
    QCommandLineOption exportTo{QStringLiteral("export"),
                                //% "Write the collection to FILE, without a window."
                                qtTrId("CommandLineExportOption"), QStringLiteral("FILE")};
    QCommandLineOption format{
        QStringLiteral("format"),
        //% "With --export: fortune, text or json (default: by FILE's extension, else fortune)."
        qtTrId("CommandLineFormatOption"), QStringLiteral("NAME")};

    // Options that ask for work on the terminal.
    bool anySet(const QCommandLineParser& parser) const
    {
        return parser.isSet(help) || parser.isSet(version) || parser.isSet(import) ||
               parser.isSet(exportTo) || parser.isSet(separator) || parser.isSet(dryRun) ||
               parser.isSet(format);
    }
};

void setUp(QCommandLineParser& parser, const Options& options)
{
    // Qt's GUI options are single-dash words (-style), not bundles of letters.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    //% "Keeps a collection of quotes and turns one of them into an e-mail signature."
    parser.setApplicationDescription(qtTrId("CommandLineDescription"));
    parser.addOption(options.help);
    parser.addOption(options.version);
    parser.addOptions(
        {options.import, options.separator, options.dryRun, options.exportTo, options.format});
    //% "Files to import into the running window (or the one this starts)."
    parser.addPositionalArgument(QStringLiteral("FILE"), qtTrId("CommandLineFilesArgument"),
                                 QStringLiteral("[FILE…]"));
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

QStringList absolutePaths(const QStringList& paths)
{
    QStringList absolute;
    for (const QString& path : paths) {
        absolute << QFileInfo(path).absoluteFilePath();
    }
    return absolute;
}

// --import and --export; the caller has checked that one of them is set.
int runFileCommand(const QCommandLineParser& parser, const Options& options, const QString& program)
{
    // Standard output carries the command's answer alone; the log's lines stay out of it.
    qblog::setLogLevel(qblog::Level::Error);
    QBQuoteFileCommands commands(stdout, stderr);
    const auto fail = [&program](const QString& error) {
        print(stderr, program + QStringLiteral(": ") + error + QLatin1Char('\n'));
        return 1;
    };
    if (parser.isSet(options.exportTo)) {
        const QString path = parser.value(options.exportTo);
        std::optional<QBQuoteExport::Format> format = QBQuoteExport::formatForPath(path);
        if (parser.isSet(options.format)) {
            format = QBQuoteExport::formatNamed(parser.value(options.format));
            if (!format) {
                //% "Unknown format '%1'; use fortune, text or json."
                return fail(qtTrId("CommandLineUnknownFormat").arg(parser.value(options.format)));
            }
        }
        return commands.exportCollection(path, *format);
    }
    const QStringList files =
        absolutePaths(parser.values(options.import) + parser.positionalArguments());
    std::optional<QBSeparatorChoice> separator;
    if (parser.isSet(options.separator)) {
        separator = QBSeparatorChoice::fromName(parser.value(options.separator));
        if (separator->kind == QBSeparatorChoice::Kind::Line && separator->line.isEmpty()) {
            //% "An empty separator cuts nothing; use \"blank\" for blank lines."
            return fail(qtTrId("CommandLineEmptySeparator"));
        }
    }
    if (parser.isSet(options.dryRun)) {
        return commands.dryRunImport(files, separator);
    }
    // The collection has one writer at a time: a running window takes the files itself.
    QBSingleInstance instance(QString::fromUtf8(qbidentity::kBundleIdentifier));
    if (instance.lockWithoutListening()) {
        return commands.importIntoCollection(files, separator);
    }
    if (instance.askRunningInstanceToImport(files, separator ? separator->name() : QString(),
                                            5000)) {
        //% "Quillbox2 is already running; it imports the files."
        print(stdout, qtTrId("AlreadyRunningImports") + QLatin1Char('\n'));
        return 0;
    }
    //% "Quillbox2 is already running but does not answer."
    return fail(qtTrId("AlreadyRunningNoAnswer"));
}

} // namespace

QBLaunchRequest handleCommandLine(int argc, char* argv[])
{
    const QStringList arguments = argumentsOf(argc, argv);
    {
        // Most launches have nothing to say: decide without starting Qt at all.
        QCommandLineParser parser;
        const Options options;
        setUp(parser, options);
        if (parser.parse(arguments) && !options.anySet(parser)) {
            return {std::nullopt, absolutePaths(parser.positionalArguments())};
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
    parser.parse(arguments);
    const bool fileCommand = parser.isSet(options.import) || parser.isSet(options.exportTo);
    // Options that only qualify a command, given without it.
    const bool stray = ((parser.isSet(options.separator) || parser.isSet(options.dryRun)) &&
                        !parser.isSet(options.import)) ||
                       (parser.isSet(options.format) && !parser.isSet(options.exportTo));
    if (!parser.errorText().isEmpty() || stray) {
        const QString error =
            parser.errorText().isEmpty()
                //% "--separator and --dry-run go with --import, --format with --export."
                ? qtTrId("CommandLineOptionWithoutCommand")
                : parser.errorText();
        //% "Try '%1 --help' for more information."
        print(stderr, program + QStringLiteral(": ") + error + QLatin1Char('\n') +
                          qtTrId("CommandLineTryHelp").arg(program) + QLatin1Char('\n'));
        return {1, {}};
    }
    if (parser.isSet(options.help)) {
        print(stdout, parser.helpText());
        return {0, {}};
    }
    if (fileCommand) {
        return {runFileCommand(parser, options, program), {}};
    }
    print(stdout, program + QLatin1Char(' ') + QStringLiteral(QB_VERSION) + QLatin1Char('\n'));
    return {0, {}};
}

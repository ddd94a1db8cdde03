// quillbox2-helper: changes the e-mail signature to another quote at an interval, or
// prints the next quote for mail clients that run a command for every message.
#include "core/AppIdentity.h"
#include "helper/HelperCommands.h"
#include "i18n/Translations.h"
#include "util/ProcessSafety.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
    makeProcessSafe();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QString::fromUtf8(qbidentity::kHelperProcessName));
    QCoreApplication::setApplicationVersion(QStringLiteral(QB_VERSION));
    installTranslations();

    QCommandLineParser parser;
    //% "Changes the e-mail signature file of Quillbox2 to another quote at the interval "
    //% "set in Quillbox2, while automatic changes are on."
    parser.setApplicationDescription(qtTrId("HelperCommandLineDescription"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption print(QStringLiteral("print"),
                                   //% "Print the next quote to standard output and exit (for "
                                   //% "mail clients that run a command for the signature)."
                                   qtTrId("HelperCommandLinePrintOption"));
    parser.addOption(print);
    const QCommandLineOption next(QStringLiteral("next"),
                                  //% "Put the next quote into the signature file now, print "
                                  //% "it and exit."
                                  qtTrId("HelperCommandLineNextOption"));
    parser.addOption(next);
    parser.process(application); // --help, --version and unknown options end here
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "%s: %s\n", qbidentity::kHelperProcessName,
                     //% "Unexpected argument '%1'."
                     qPrintable(qtTrId("CommandLineUnexpectedArgument")
                                    .arg(parser.positionalArguments().constFirst())));
        return 1;
    }

    if (parser.isSet(print) && parser.isSet(next)) {
        std::fprintf(stderr, "%s: %s\n", qbidentity::kHelperProcessName,
                     //% "--print and --next cannot be used together."
                     qPrintable(qtTrId("HelperCommandLinePrintAndNext")));
        return 1;
    }
    if (parser.isSet(print)) {
        return qbhelper::printNextQuote();
    }
    return parser.isSet(next) ? qbhelper::writeNextQuoteAndPrint() : qbhelper::runRotation();
}

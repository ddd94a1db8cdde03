#include "app/AppDelegate.h"
#include "app/AppIcon.h"
#include "app/CommandLine.h"
#include "app/SingleInstance.h"
#include "core/AppIdentity.h"
#include "i18n/Translations.h"
#include "util/ProcessSafety.h"
#include "util/UnixSignalWatcher.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    makeProcessSafe();
    const QBLaunchRequest request = handleCommandLine(argc, argv);
    if (request.exitCode) {
        return *request.exitCode;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QString::fromUtf8(qbidentity::kProcessName));
    // No application display name: Qt would append it to every window title, and the quotes
    // window's title already names the program ("quillbox2 – 45 quotes").
    QApplication::setApplicationVersion(QStringLiteral(QB_VERSION));
    QApplication::setOrganizationDomain(QStringLiteral("quillbox2.org"));
    QApplication::setDesktopFileName(QString::fromUtf8(qbidentity::kBundleIdentifier));
    QApplication::setWindowIcon(applicationIcon());

    installTranslations();

    QBSingleInstance singleInstance(QString::fromUtf8(qbidentity::kBundleIdentifier));
    if (const std::optional<int> exitCode = singleInstance.start(5000, request.filesToImport)) {
        return *exitCode;
    }

    QBAppDelegate delegate;
    QObject::connect(&singleInstance, &QBSingleInstance::activationRequested, &delegate,
                     &QBAppDelegate::bringWindowToFront);
    QObject::connect(&singleInstance, &QBSingleInstance::importRequested, &delegate,
                     &QBAppDelegate::importFiles);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
                     &QBAppDelegate::applicationWillTerminate);
    QBUnixSignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &QBUnixSignalWatcher::terminationRequested, &application,
                     &QCoreApplication::quit);

    delegate.applicationDidFinishLaunching();
    if (!request.filesToImport.isEmpty()) {
        delegate.importFiles(request.filesToImport, {});
    }
    return QApplication::exec();
}

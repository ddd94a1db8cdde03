#include "app/AppDelegate.h"
#include "app/Translations.h"
#include "app/UnixSignalWatcher.h"
#include "core/AppIdentity.h"
#include "util/ProcessSafety.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char* argv[])
{
    makeProcessSafe();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QString::fromUtf8(qbidentity::kProcessName));
    QApplication::setApplicationDisplayName(QString::fromUtf8(qbidentity::kDisplayName));
    QApplication::setApplicationVersion(QStringLiteral(QB_VERSION));
    QApplication::setOrganizationDomain(QStringLiteral("quillbox2.org"));
    QApplication::setDesktopFileName(QString::fromUtf8(qbidentity::kBundleIdentifier));
    // The installed icon, found through the icon theme by the desktop entry's name.
    QApplication::setWindowIcon(QIcon::fromTheme(QString::fromUtf8(qbidentity::kBundleIdentifier)));

    installTranslations();

    QBAppDelegate delegate;
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
                     &QBAppDelegate::applicationWillTerminate);
    QBUnixSignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &QBUnixSignalWatcher::terminationRequested, &application,
                     &QCoreApplication::quit);

    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}

#include "app/AppDelegate.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quillbox2"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillbox2"));
    QApplication::setApplicationVersion(QStringLiteral(QB_VERSION));
    QApplication::setOrganizationDomain(QStringLiteral("quillbox2.org"));
    QApplication::setDesktopFileName(QStringLiteral("org.quillbox2.Quillbox2"));

    QBAppDelegate delegate;
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
                     &QBAppDelegate::applicationWillTerminate);
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}

#include "app/AppDelegate.h"

#include "logging/Log.h"
#include "logging/ULog.h"

#include <QCoreApplication>
#include <QDir>
#include <QMainWindow>

QBAppDelegate::QBAppDelegate(QObject* parent) : QObject(parent) {}

QBAppDelegate::~QBAppDelegate()
{
    delete mWindow;
}

QString QBAppDelegate::getPathToLogFile()
{
    QString stateHome = qEnvironmentVariable("XDG_STATE_HOME");
    if (stateHome.isEmpty()) {
        stateHome = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return stateHome + QStringLiteral("/Logs/") + QCoreApplication::applicationName() +
           QStringLiteral(".log");
}

void QBAppDelegate::applicationDidFinishLaunching()
{
    qblog::setupLogging(getPathToLogFile().toStdString());
    logInfoMessage(
        QStringLiteral("Launch of %1 %2 completed.")
            .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));

    mWindow = new QMainWindow;
    mWindow->setWindowTitle(QStringLiteral("Quillbox2"));
    mWindow->resize(900, 600);
    mWindow->show();
}

void QBAppDelegate::applicationWillTerminate()
{
    logInfoMessage("Shutting down.");
}

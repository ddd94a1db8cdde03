#include "app/AppDelegate.h"

#include "app/MainMenu.h"
#include "core/FolderHelper.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "logging/ULog.h"
#include "model/QuotesAutoSaver.h"
#include "signature/SettingsKeys.h"
#include "telemetry/QBTelemetryHelper.h"
#include "telemetry/TelemetryBuildSettings.h"
#include "ui/AboutWindow.h"
#include "util/UserDefaults.h"

#include <QApplication>
#include <QMainWindow>

QBAppDelegate::QBAppDelegate(QObject* parent) : QObject(parent) {}

QBAppDelegate::~QBAppDelegate()
{
    delete mWindow;
}

QString QBAppDelegate::getPathToLogFile()
{
    const std::optional<std::string> logsFolder = QBFolderHelper::getPathToLogsFolder();
    if (!logsFolder) {
        return QString();
    }
    return QString::fromStdString(*logsFolder) + QLatin1Char('/') +
           QStringLiteral("%1.log").arg(QCoreApplication::applicationName());
}

void QBAppDelegate::applicationDidFinishLaunching()
{
    qblog::setupLogging(getPathToLogFile().toStdString(), qblog::kDefaultFileSizeLimitKiB, true);
    logInfoMessage(
        QStringLiteral("Launch of %1 %2 completed.")
            .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));

    QBTelemetryHelper::shared().configureWithAppID(qbtelemetrybuild::applicationID());

    initializeQuotesDB();

    // The value transformers of the quotes window's bindings join here with that window.
    QApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    showMainWindow();

    QBUserDefaults::standardUserDefaults().registerDefaults(registeredDefaultSettings());
}

void QBAppDelegate::initializeQuotesDB()
{
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    const std::optional<std::string> path = QBQuotesDBHelper::getPathToQuotesDb();
    if (!QBQuotesDBHelper::fileExistsAtPath(path)) {
        QBQuotesDBHelper::copyDefaultQuotesToQuotesDb(path);
    }
    if (QBQuotesDBHelper::fileExistsAtPath(path)) {
        CQuotesRepository& repository = CQuotesRepository::getInstance();
        repository.mFilePath = *path;
        repository.loadQuotes();
        mAutoSaver = std::make_unique<QBQuotesAutoSaver>();
    } else {
        logWarning("(Still) no quotes DB after initialization found at %s",
                   path.value_or(QBQuotesDBHelper::kMissingObjectText).c_str());
    }
}

void QBAppDelegate::showMainWindow()
{
    // The quotes window takes this place when it lands; it gets the same menu.
    mWindow = new QMainWindow;
    mWindow->setObjectName(QStringLiteral("QBQuotesWindow"));
    mWindow->setWindowTitle(QApplication::applicationDisplayName());
    mWindow->resize(900, 600);
    installMainMenu(*mWindow, *this);
    mWindow->show();
}

void QBAppDelegate::applicationWillTerminate()
{
    logInfoMessage("Shutting down.");
}

void QBAppDelegate::saveDocument()
{
    CQuotesRepository::getInstance().saveQuotes();
}

void QBAppDelegate::showAboutWindow()
{
    if (!mAboutWindow) {
        // A child of the main window, so it never keeps the program alive on its own.
        mAboutWindow = new QBAboutWindow(QApplication::applicationDisplayName(),
                                         QApplication::applicationVersion(), mWindow);
    }
    mAboutWindow->show();
    mAboutWindow->raise();
    mAboutWindow->activateWindow();
}

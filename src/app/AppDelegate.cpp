#include "app/AppDelegate.h"

#include "app/LaunchMessages.h"
#include "app/MainMenu.h"
#include "app/QuotesWindowController.h"
#include "core/AppIdentity.h"
#include "core/FolderHelper.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "import/QuoteBatchImportHelper.h"
#include "logging/Log.h"
#include "logging/ULog.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesAutoSaver.h"
#include "signature/SettingsKeys.h"
#include "telemetry/QBTelemetryHelper.h"
#include "telemetry/TelemetryBuildSettings.h"
#include "telemetry/TelemetryManager.h"
#include "ui/AboutWindow.h"
#include "ui/Alert.h"
#include "ui/LaunchProbe.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

#include <QApplication>
#include <QMainWindow>
#include <QScreen>
#include <QSessionManager>

QBAppDelegate::QBAppDelegate(QObject* parent) : QObject(parent) {}

QBAppDelegate::~QBAppDelegate()
{
    CQuotesRepository::getInstance().setConflictCopyObserver([](const std::string& copyPath) {
        QBUserMessages::shared().show(
            {.kind = QBUserMessage::Kind::Warning,
             //% "Another program changed your quotes while Quillbox2 had them open. Its version "
             //% "was kept at %1."
             .text = qtTrId("QuotesConflictCopyKeptMessage").arg(QString::fromStdString(copyPath)),
             .topic = QStringLiteral("quotes-conflict")});
    });
    QBQuoteEditHelper::setYesNoQuestion({});
    delete mQuotesWindowController;
}

QMainWindow* QBAppDelegate::window() const
{
    return mQuotesWindowController;
}

namespace {
// Screen and appearance facts for the usage signals, which the telemetry client cannot
// read itself without a GUI.
DisplayEnvironment displayEnvironmentOf(const QWidget& window)
{
    DisplayEnvironment environment;
    if (const QScreen* screen = window.screen()) {
        environment.screenWidth = screen->size().width();
        environment.screenHeight = screen->size().height();
        environment.screenScaleFactor = screen->devicePixelRatio();
    }
    // Qt 6.4 has no colour-scheme query; a dark window background means a dark scheme.
    environment.colorScheme = window.palette().color(QPalette::Window).lightness() < 128
                                  ? QStringLiteral("Dark")
                                  : QStringLiteral("Light");
    return environment;
}
} // namespace

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

    QBTelemetryHelper::shared().configureWithAppID(
        qbtelemetrybuild::applicationID(),
        sharesUsageStatistics(
            QBUserDefaults::standardUserDefaults().objectForKey(QBDefaultsShareUsageStatistics)));

    initializeQuotesDB();

    QApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    showMainWindow();
    installAlerts();
    qblaunchmessages::installSaveMessages();
    qblaunchmessages::postLaunchMessages();
    if (TelemetryManager* telemetry = TelemetryManager::shared()) {
        telemetry->setDisplayEnvironment(displayEnvironmentOf(*mQuotesWindowController));
    }

    QBUserDefaults::standardUserDefaults().registerDefaults(registeredDefaultSettings());
    // A logout may end the process without another word: typed text is kept first.
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) {
        if (mQuotesWindowController)
            mQuotesWindowController->keepEditAndRememberPlace();
    });
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
    // Commands follow the list's emptiness and selection inside the window itself, so
    // there are no value transformers to register first.
    mQuotesWindowController = new QBQuotesWindowController(&mUndoManager);
    installMainMenu(*mQuotesWindowController, *this);
    mQuotesWindowController->installQuotesMenu();
    installLaunchProbe(mQuotesWindowController);
    mQuotesWindowController->show();
}

void QBAppDelegate::installAlerts()
{
    QBAlert::shared().setParentWindow(mQuotesWindowController);
    CQuotesRepository::getInstance().setConflictCopyObserver([](const std::string& copyPath) {
        QBUserMessages::shared().show(
            {.kind = QBUserMessage::Kind::Warning,
             //% "Another program changed your quotes while Quillbox2 had them open. Its version "
             //% "was kept at %1."
             .text = qtTrId("QuotesConflictCopyKeptMessage").arg(QString::fromStdString(copyPath)),
             .topic = QStringLiteral("quotes-conflict")});
    });
    QBQuoteEditHelper::setYesNoQuestion([](const QString& title, const QString& message, int style,
                                           std::function<void()> onYes,
                                           std::function<void()> onNo) {
        QBAlert::shared().showYesNoAlertWithLocalizedTitle(title, message, style, std::move(onYes),
                                                           std::move(onNo));
    });
}

void QBAppDelegate::applicationWillTerminate()
{
    // Quit, SIGTERM or the session ending: the text typed into the editor is kept.
    if (mQuotesWindowController)
        mQuotesWindowController->keepEditAndRememberPlace();
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
        mAboutWindow =
            new QBAboutWindow(QString::fromUtf8(qbidentity::kDisplayName),
                              QApplication::applicationVersion(), mQuotesWindowController);
    }
    mAboutWindow->show();
    mAboutWindow->raise();
    mAboutWindow->activateWindow();
}

void QBAppDelegate::bringWindowToFront()
{
    logInfoMessage("Another launch asked for the window; bringing it to the front.");
    if (!mQuotesWindowController) {
        return;
    }
    mQuotesWindowController->setWindowState(
        (mQuotesWindowController->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    mQuotesWindowController->show();
    mQuotesWindowController->raise();
    mQuotesWindowController->activateWindow();
}

void QBAppDelegate::importFiles(const QStringList& files, const QString& separator)
{
    logInfoMessage(QStringLiteral("Asked to import %1 file(s)").arg(files.size()));
    if (mQuotesWindowController) {
        mQuotesWindowController->show();
        mQuotesWindowController->raise();
        mQuotesWindowController->activateWindow();
    }
    QBQuoteBatchImportHelper::importFiles(
        files, separator.isEmpty() ? std::nullopt
                                   : std::make_optional(QBSeparatorChoice::fromName(separator)));
}

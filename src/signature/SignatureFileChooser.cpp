#include "signature/SignatureFileChooser.h"

#include "core/AppIdentity.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "logging/ULog.h"
#include "model/Notifications.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/FileBookmark.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "ui/Alert.h"
#include "util/NotificationCenter.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

const QString QBSignatureFileChooser::kHintTopic = QStringLiteral("signatureFileHint");

namespace {

// A signature file is short; anything longer is no file of ours.
constexpr qint64 kLargestOwnFile = 1 << 20;

bool isBookmarkedFile(const QString& path)
{
    const QVariant stored =
        QBSharedUserDefaults::sharedInstance().objectForKey(QBPrivateDefaultsOutputFileSSB);
    const std::optional<std::string> base = QBQuotesDBHelper::getPathToQuotesDb();
    if (stored.typeId() != QMetaType::QByteArray || !base)
        return false;
    const QBFileBookmark::Resolution resolution =
        QBFileBookmark::resolve(stored.toByteArray(), QString::fromStdString(*base));
    return resolution.ok() && !resolution.isStale &&
           QFileInfo(resolution.path).canonicalFilePath() == QFileInfo(path).canonicalFilePath();
}

// The main window, which the save dialog was shown on; the active window without one.
QWidget* mainWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && qobject_cast<QMainWindow*>(window))
            return window;
    }
    return QApplication::activeWindow();
}

void askBeforeReplacing(const QUrl& url, std::function<void(const QUrl&)> use)
{
    QWidget* parent = mainWindow();
    const QString name = QFileInfo(url.toLocalFile()).fileName();
    //% "Replace “%1”?"
    auto* box = new QMessageBox(
        QMessageBox::Warning, qtTrId("ReplaceForeignFileTitle").arg(name),
        //% "“%1” already exists and was not written by %2. Its contents "
        //% "will be replaced by your quotes."
        qtTrId("ReplaceForeignFileMessage").arg(name, QString::fromUtf8(qbidentity::kDisplayName)),
        QMessageBox::Cancel, parent);
    //% "Replace"
    QPushButton* replace =
        box->addButton(qtTrId("ReplaceForeignFileButton"), QMessageBox::DestructiveRole);
    box->setDefaultButton(QMessageBox::Cancel);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(parent != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
    QObject::connect(box, &QMessageBox::finished, box, [box, replace, url, use = std::move(use)] {
        if (box->clickedButton() == replace)
            use(url);
        else
            logInfoMessage(QStringLiteral("Kept '%1': not chosen as the signature file")
                               .arg(url.toLocalFile()));
    });
    box->open();
}

} // namespace

bool QBSignatureFileChooser::isOwnSignatureFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists() || info.size() == 0)
        return true;
    if (isBookmarkedFile(path))
        return true;
    QFile file(path);
    if (info.size() > kLargestOwnFile || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    // "..." is what the window writes with no quote selected.
    if (bytes == QBCurrentSignatureFileHelper::signatureBytes(QStringLiteral("...")))
        return true;
    for (const CQuoteRecord& record : CQuotesRepository::getInstance().mQuotes) {
        if (QBCurrentSignatureFileHelper::signatureBytes(QString::fromStdString(record.mContent)) ==
            bytes)
            return true;
    }
    return false;
}

void QBSignatureFileChooser::chooseFile(std::function<void(const QUrl&)> use)
{
    QBCurrentSignatureFileHelper::askPathToOutputSignatureFile([use](const QUrl& url) {
        if (isOwnSignatureFile(url.toLocalFile()))
            use(url);
        else
            askBeforeReplacing(url, use);
    });
}

void QBSignatureFileChooser::chooseAndUseFile()
{
    chooseFile([](const QUrl& url) {
        useFile(url, QBUserDefaults::standardUserDefaults(), QApplication::instance());
    });
}

bool QBSignatureFileChooser::useFile(const QUrl& url, QBUserDefaults& defaults, QObject* sender)
{
    const QString path = url.toLocalFile();
    logInfoMessage(QStringLiteral("Path changed to ") + path);
    if (path.isEmpty()) {
        logWarningMessage("Empty path received in updateOutputFilePath(_:)");
        return false;
    }
    if (QBCurrentSignatureFileHelper::isPathOnICloudDrive(url)) {
        //% "Please Choose Different Location"
        QBAlert::shared().warningWithTitle(qtTrId("PleaseChooseDifferentLocation"),
                                           //% "iCloud Drive Not Yet Supported"
                                           qtTrId("ICloudDriveNotYetSupported"));
        return false;
    }
    defaults.setObject(path, QBDefaultsSignatureOutputPath);
    QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(url);
    QBUserMessages::shared().dismiss(kHintTopic);
    QBNotificationCenter::defaultCenter().post(QBWriteCurrentQuoteNotification, sender);
    return true;
}

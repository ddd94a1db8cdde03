#include "signature/CurrentSignatureFileHelper.h"

#include "core/QuotesDBHelper.h"
#include "logging/ULog.h"
#include "signature/FileBookmark.h"
#include "signature/FileReplacer.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "util/UserMessages.h"

const QString QBCurrentSignatureFileHelper::kUserMessageTopic = QStringLiteral("signature-file");

QString QBCurrentSignatureFileHelper::bookmarkBasePath()
{
    const std::optional<std::string> path = QBQuotesDBHelper::getPathToQuotesDb();
    if (!path) {
        qFatal("No quotes database path: the signature file bookmark needs it as its base, and "
               "the application group container is unavailable ($XDG_DATA_HOME and $HOME are "
               "both unusable).");
    }
    return QString::fromStdString(*path);
}

void QBCurrentSignatureFileHelper::createSecurityScopedBookmarkForPath(const QUrl& url)
{
    const QString basePath = bookmarkBasePath();
    const QBFileBookmark::Creation creation = QBFileBookmark::create(url.toLocalFile(), basePath);
    if (creation.data.isEmpty()) {
        logWarningMessage(QStringLiteral("Failed to create a security scoped bookmark: ") +
                          creation.error);
        return;
    }
    QBSharedUserDefaults::sharedInstance().setObject(creation.data, QBPrivateDefaultsOutputFileSSB);
}

bool QBCurrentSignatureFileHelper::isPathOnICloudDrive(const QUrl& url)
{
    return url.path().contains(QStringLiteral("com~apple~CloudDocs"), Qt::CaseSensitive);
}

using Level = qblog::Level;

QBCurrentSignatureFileHelper::WriteResult
QBCurrentSignatureFileHelper::writeFailure(const QString& error, const QString& reason)
{
    return {false,
            {{Level::Warning,
              QStringLiteral("Failed to access security scoped bookmark or write file: ") + error},
             {Level::Info, QStringLiteral("Helper app detected bookmark failure but not deleting "
                                          "(main app responsibility)")}},
            reason};
}

QBCurrentSignatureFileHelper::WriteResult QBCurrentSignatureFileHelper::noBookmark()
{
    return {false,
            {{Level::Warning, QStringLiteral("Failed to read security scoped bookmark")}},
            //% "No signature file is chosen."
            qtTrId("SignatureNoFileReason")};
}

QBCurrentSignatureFileHelper::WriteResult QBCurrentSignatureFileHelper::staleBookmark()
{
    return {false,
            {{Level::Warning, QStringLiteral("Failed to resolve bookmark: Data is stale")},
             {Level::Info, QStringLiteral("Helper app detected stale bookmark but not deleting "
                                          "(main app responsibility)")}},
            //% "Another file has taken its place since it was chosen."
            qtTrId("SignatureFileReplacedReason")};
}

void QBCurrentSignatureFileHelper::logMessages(
    const std::vector<std::pair<qblog::Level, QString>>& messages)
{
    for (const auto& [level, message] : messages) {
        switch (level) {
        case Level::Debug:
            logDebugMessage(message);
            break;
        case Level::Info:
            logInfoMessage(message);
            break;
        case Level::Warning:
            logWarningMessage(message);
            break;
        case Level::Error:
            logErrorMessage(message);
            break;
        }
    }
}

QByteArray QBCurrentSignatureFileHelper::signatureBytes(const QString& content)
{
    return QBSignatureComposer::compose(content, QBSignatureSettings()).bytes;
}

bool QBCurrentSignatureFileHelper::hasStoredBookmark()
{
    QBSharedUserDefaults& suite = QBSharedUserDefaults::sharedInstance();
    // The other process may have replaced the file and recorded its identity since.
    suite.suiteUserDefaults().synchronize();
    return suite.objectForKey(QBPrivateDefaultsOutputFileSSB).typeId() == QMetaType::QByteArray;
}

bool QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(const QString& content)
{
    const WriteResult result = writeSignature(content);
    logMessages(result.messages);
    if (result.written) {
        QBUserMessages::shared().dismiss(kUserMessageTopic);
    } else if (!result.reason.isEmpty()) {
        QBUserMessage message;
        message.kind = QBUserMessage::Kind::Warning;
        message.text = result.reason;
        message.topic = kUserMessageTopic;
        QBUserMessages::shared().show(message);
    }
    return result.written;
}

bool QBCurrentSignatureFileHelper::writeQuoteAsSignature(const QString& quote,
                                                         const QBUserDefaults& defaults,
                                                         QBComposedSignature* composed,
                                                         WriteResult* written)
{
    QBComposedSignature signature =
        QBSignatureComposer::compose(quote, QBSignatureSettings::fromDefaults(defaults));
    WriteResult result = writeSignatureBytes(signature.bytes);
    logMessages(result.messages);
    if (composed != nullptr) {
        *composed = std::move(signature);
    }
    const bool ok = result.written;
    if (written != nullptr) {
        *written = std::move(result);
    }
    return ok;
}

QBCurrentSignatureFileHelper::WriteResult
QBCurrentSignatureFileHelper::writeSignature(const QString& content)
{
    return writeSignatureBytes(signatureBytes(content));
}

QBCurrentSignatureFileHelper::WriteResult
QBCurrentSignatureFileHelper::writeSignatureBytes(const QByteArray& bytes)
{
    if (!hasStoredBookmark()) {
        return noBookmark();
    }
    QBSharedUserDefaults& suite = QBSharedUserDefaults::sharedInstance();
    const QByteArray bookmark = suite.objectForKey(QBPrivateDefaultsOutputFileSSB).toByteArray();

    const QBFileBookmark::Resolution resolution =
        QBFileBookmark::resolve(bookmark, bookmarkBasePath());
    if (!resolution.ok()) {
        return writeFailure(resolution.error, resolution.error);
    }
    if (resolution.isStale) {
        return staleBookmark();
    }

    QBFileBookmark::startAccessingSecurityScopedResource(resolution.path);
    // The new file is recorded before it takes the old one's place: a process killed
    // right after the rename still finds its own file where the bookmark points.
    const QBFileReplacer::Result result = QBFileReplacer::replaceContent(
        resolution.path, bytes,
        [&bookmark](quint64 device, quint64 inode) {
            return QBFileBookmark::recordsIdentity(bookmark, device, inode);
        },
        [&bookmark, &suite](quint64 device, quint64 inode) {
            suite.setObject(QBFileBookmark::withPendingIdentity(bookmark, device, inode),
                            QBPrivateDefaultsOutputFileSSB);
            return true;
        });
    QBFileBookmark::stopAccessingSecurityScopedResource(resolution.path);

    switch (result.status) {
    case QBFileReplacer::Result::Status::NotTheExpectedFile:
        return staleBookmark();
    case QBFileReplacer::Result::Status::Failed:
        return writeFailure(
            QStringLiteral("Cannot write '%1': %2").arg(resolution.path, result.error),
            result.error);
    case QBFileReplacer::Result::Status::Written:
        break;
    }
    // Our own replacement is still the bookmarked file; only someone else's reads as stale.
    suite.setObject(QBFileBookmark::withIdentity(bookmark, result.device, result.inode),
                    QBPrivateDefaultsOutputFileSSB);
    return {true, {}, {}};
}

#include "signature/CurrentSignatureFileHelper.h"

#include "core/QuotesDBHelper.h"
#include "logging/ULog.h"
#include "signature/FileBookmark.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include <QFile>

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

void QBCurrentSignatureFileHelper::logWriteFailure(const QString& error)
{
    logWarningMessage(QStringLiteral("Failed to access security scoped bookmark or write file: ") +
                      error);
    logInfoMessage("Helper app detected bookmark failure but not deleting (main app "
                   "responsibility)");
}

bool QBCurrentSignatureFileHelper::writeToCurrentSignatureFileContent(const QString& content)
{
    const QVariant stored =
        QBSharedUserDefaults::sharedInstance().objectForKey(QBPrivateDefaultsOutputFileSSB);
    if (stored.typeId() != QMetaType::QByteArray) {
        logWarningMessage("Failed to read security scoped bookmark");
        return false;
    }

    const QBFileBookmark::Resolution resolution =
        QBFileBookmark::resolve(stored.toByteArray(), bookmarkBasePath());
    if (!resolution.ok()) {
        logWriteFailure(resolution.error);
        return false;
    }
    if (resolution.isStale) {
        logWarningMessage("Failed to resolve bookmark: Data is stale");
        logInfoMessage("Helper app detected stale bookmark but not deleting (main app "
                       "responsibility)");
        return false;
    }

    QBFileBookmark::startAccessingSecurityScopedResource(resolution.path);
    // In place, not through a temporary file: a replaced file would no longer be the
    // bookmarked one. ExistingOnly: a file that vanished since resolving is not recreated.
    QFile file(resolution.path);
    const QByteArray bytes = content.toUtf8();
    const bool written =
        file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::ExistingOnly) &&
        file.write(bytes) == bytes.size() && file.flush();
    const QString error = file.errorString();
    file.close();
    QBFileBookmark::stopAccessingSecurityScopedResource(resolution.path);
    if (!written) {
        logWriteFailure(QStringLiteral("Cannot write '%1': %2").arg(resolution.path, error));
        return false;
    }
    return true;
}

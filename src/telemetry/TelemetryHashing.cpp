#include "TelemetryHashing.h"

#include <QCryptographicHash>

namespace qbtelemetryhash {

QString sha256Hex(const QString& text, const QString& salt)
{
    const QByteArray digest =
        QCryptographicHash::hash((text + salt).toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex());
}

QString suiteNameForAppID(const QString& appID)
{
    return QStringLiteral("com.tallyhub.") + sha256Hex(appID).right(12);
}

} // namespace qbtelemetryhash

#include "signature/HelperSchedule.h"

#include "core/AppIdentity.h"
#include "core/QuotesDBHelper.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

QString QBHelperSchedule::filePath()
{
    const std::optional<std::string> folder = QBQuotesDBHelper::getApplicationGroupFolder();
    if (!folder) {
        return QString();
    }
    return QString::fromStdString(*folder) + QLatin1Char('/') +
           QString::fromUtf8(qbidentity::kHelperProcessName) + QStringLiteral("-next");
}

bool QBHelperSchedule::recordNextChange(const QDateTime& nextChange)
{
    const QString path = filePath();
    if (path.isEmpty()) {
        return false;
    }
    // Replaced by a rename: a reader never sees half a line.
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) &&
           file.write(nextChange.toUTC().toString(Qt::ISODateWithMs).toLatin1() + '\n') > 0 &&
           file.commit();
}

QDateTime QBHelperSchedule::readNextChange()
{
    QFile file(filePath());
    // Only a regular file: anything else could block the read.
    if (!QFileInfo(file.fileName()).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return QDateTime();
    }
    return QDateTime::fromString(QString::fromLatin1(file.read(64)).trimmed(), Qt::ISODateWithMs);
}

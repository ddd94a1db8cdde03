#include "signature/SharedUserDefaults.h"

#include "core/AppIdentity.h"
#include "core/QuotesDBHelper.h"

#include <QtGlobal>

QBSharedUserDefaults& QBSharedUserDefaults::sharedInstance()
{
    // A function-local static is initialised exactly once, even with several threads.
    static QBSharedUserDefaults instance = [] {
        const QString path = suitePath();
        if (path.isEmpty()) {
            qFatal("The shared settings suite cannot be opened: the application group "
                   "container is unavailable ($XDG_DATA_HOME and $HOME are both unusable).");
        }
        return QBSharedUserDefaults(path);
    }();
    return instance;
}

QString QBSharedUserDefaults::suitePath()
{
    const std::optional<std::string> container = QBQuotesDBHelper::getApplicationGroupContainer();
    if (!container) {
        return QString();
    }
    return QString::fromStdString(*container) + QStringLiteral("/Library/Preferences/") +
           QString::fromUtf8(qbidentity::kApplicationGroupIdentifier) + QStringLiteral(".conf");
}

QBSharedUserDefaults::QBSharedUserDefaults(const QString& filePath)
    : mSuite(std::make_unique<QBUserDefaults>(filePath))
{}

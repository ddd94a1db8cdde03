#include "util/UserDefaults.h"

#include "util/NotificationCenter.h"

#include <QDir>
#include <QMutexLocker>

#include <optional>

namespace {
QMutex gStandardMutex;
std::unique_ptr<QBUserDefaults> gStandardDefaults; // guarded by gStandardMutex
QString gStandardPathOverride;                     // guarded by gStandardMutex
} // namespace

QBUserDefaults::QBUserDefaults(const QString& filePath, QObject* parent)
    : QObject(parent), mFilePath(filePath),
      mSettings(std::make_unique<QSettings>(filePath, QSettings::IniFormat))
{
    // The centre is main-thread only; a change made on another thread arrives queued.
    connect(this, &QBUserDefaults::didChange, this, [this] {
        QBNotificationCenter::defaultCenter().post(QBUserDefaultsDidChangeNotification, this);
    });
}

QBUserDefaults::~QBUserDefaults() = default;

QBUserDefaults& QBUserDefaults::standardUserDefaults()
{
    QMutexLocker locker(&gStandardMutex);
    if (!gStandardDefaults) {
        const QString path =
            gStandardPathOverride.isEmpty() ? standardUserDefaultsPath() : gStandardPathOverride;
        gStandardDefaults = std::make_unique<QBUserDefaults>(path);
    }
    return *gStandardDefaults;
}

QString QBUserDefaults::standardUserDefaultsPath()
{
    QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    // The XDG rules ignore relative values.
    if (configHome.isEmpty() || QDir::isRelativePath(configHome)) {
        configHome = QDir::homePath() + QStringLiteral("/.config");
    }
    return configHome + QStringLiteral("/Quillbox2/Quillbox2.conf");
}

void QBUserDefaults::resetStandardUserDefaults(const QString& filePath)
{
    QMutexLocker locker(&gStandardMutex);
    gStandardDefaults.reset();
    gStandardPathOverride = filePath;
}

void QBUserDefaults::registerDefaults(const QVariantMap& defaults)
{
    {
        QMutexLocker locker(&mMutex);
        for (auto it = defaults.cbegin(); it != defaults.cend(); ++it) {
            mRegistrationDomain.insert(it.key(), it.value());
        }
    }
    emit didChange(QString());
}

QVariantMap QBUserDefaults::dictionaryRepresentation() const
{
    QMutexLocker locker(&mMutex);
    QVariantMap merged = mRegistrationDomain;
    const QStringList keys = mSettings->allKeys();
    for (const QString& key : keys) {
        merged.insert(key, mSettings->value(key));
    }
    return merged;
}

QVariant QBUserDefaults::lockedObjectForKey(const QString& key) const
{
    QVariant value = mSettings->value(key);
    if (!value.isValid()) {
        value = mRegistrationDomain.value(key);
    }
    return value;
}

QVariant QBUserDefaults::objectForKey(const QString& key) const
{
    QMutexLocker locker(&mMutex);
    return lockedObjectForKey(key);
}

QString QBUserDefaults::stringForKey(const QString& key) const
{
    const QVariant value = objectForKey(key);
    return value.canConvert<QString>() ? value.toString() : QString();
}

namespace {
// The INI file hands numbers and booleans back as text; this reads such text (or a
// typed value) as a number the way the platform's defaults do: "YES"/"true" is 1.
std::optional<double> numberFromValue(const QVariant& value, qint64* exactInteger)
{
    if (value.typeId() != QMetaType::QString) {
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (ok && exactInteger) {
            // Truncate fractions as a cast would (QVariant would round them).
            const bool isFraction =
                value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float;
            *exactInteger = isFraction ? static_cast<qint64>(number) : value.toLongLong();
        }
        return ok ? std::optional<double>(number) : std::nullopt;
    }
    const QString text = value.toString().trimmed();
    bool ok = false;
    const qint64 integer = text.toLongLong(&ok);
    if (ok) {
        if (exactInteger) {
            *exactInteger = integer;
        }
        return static_cast<double>(integer);
    }
    const double number = text.toDouble(&ok);
    if (ok) {
        if (exactInteger) {
            *exactInteger = static_cast<qint64>(number);
        }
        return number;
    }
    const QString word = text.toLower();
    if (word == QStringLiteral("true") || word == QStringLiteral("yes")) {
        if (exactInteger) {
            *exactInteger = 1;
        }
        return 1.0;
    }
    return std::nullopt;
}
} // namespace

bool QBUserDefaults::boolForKey(const QString& key) const
{
    return boolFromValue(objectForKey(key));
}

bool QBUserDefaults::boolFromValue(const QVariant& value)
{
    const std::optional<double> number = numberFromValue(value, nullptr);
    return number && *number != 0.0;
}

qint64 QBUserDefaults::integerForKey(const QString& key) const
{
    qint64 integer = 0;
    return numberFromValue(objectForKey(key), &integer) ? integer : 0;
}

double QBUserDefaults::doubleForKey(const QString& key) const
{
    return numberFromValue(objectForKey(key), nullptr).value_or(0.0);
}

bool QBUserDefaults::isRemovalValue(const QVariant& value)
{
    if (!value.isValid()) {
        return true;
    }
    if (value.typeId() == QMetaType::QString) {
        return value.toString().isEmpty();
    }
    if (value.typeId() == QMetaType::QByteArray) {
        return value.toByteArray().isEmpty();
    }
    return false;
}

void QBUserDefaults::setObject(const QVariant& value, const QString& key)
{
    {
        QMutexLocker locker(&mMutex);
        if (isRemovalValue(value)) {
            mSettings->remove(key);
        } else {
            mSettings->setValue(key, value);
        }
        // Write through so that the helper process sees the change at once.
        mSettings->sync();
    }
    emit didChange(key);
}

void QBUserDefaults::setInteger(qint64 value, const QString& key)
{
    setObject(QVariant(value), key);
}

void QBUserDefaults::removeObjectForKey(const QString& key)
{
    setObject(QVariant(), key);
}

void QBUserDefaults::synchronize()
{
    QMutexLocker locker(&mMutex);
    mSettings->sync();
}

#pragma once

#include <QMutex>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <memory>

// A typed key-value store with two domains searched in order: the persistent one (an
// INI file, shared with other processes that open the same path) and a registration
// domain of fallback values kept in memory. Every write goes to disk at once, so a
// second process sees it on its next synchronize(). Safe to use from any thread.
class QBUserDefaults : public QObject
{
    Q_OBJECT
public:
    // Opens (or will create on first write) the INI file at |filePath|.
    explicit QBUserDefaults(const QString& filePath, QObject* parent = nullptr);
    ~QBUserDefaults() override;

    // The application's own defaults at standardUserDefaultsPath(), made on first use.
    static QBUserDefaults& standardUserDefaults();
    // $XDG_CONFIG_HOME/Quillbox2/Quillbox2.conf (XDG_CONFIG_HOME defaults to ~/.config).
    static QString standardUserDefaultsPath();
    // Drops the standard object so the next standardUserDefaults() opens |filePath|, or
    // re-resolves standardUserDefaultsPath() when |filePath| is empty. For tests that
    // change XDG_CONFIG_HOME; references to the old object become invalid.
    static void resetStandardUserDefaults(const QString& filePath = QString());

    QString filePath() const { return mFilePath; }

    // Fallback values, merged into the registration domain (later calls win per key).
    void registerDefaults(const QVariantMap& defaults);
    // Every key of both domains with its value; the persistent value wins.
    QVariantMap dictionaryRepresentation() const;

    // The persistent value, else the registered one, else an invalid QVariant. The INI
    // file keeps no types: numbers and booleans written to it come back as strings,
    // byte arrays as byte arrays. The typed readers below convert.
    QVariant objectForKey(const QString& key) const;
    QString stringForKey(const QString& key) const; // empty when absent
    bool boolForKey(const QString& key) const;      // false when absent or not a truth value
    // The conversion boolForKey applies, for values taken from dictionaryRepresentation().
    static bool boolFromValue(const QVariant& value);
    qint64 integerForKey(const QString& key) const; // 0 when absent or not a number
    double doubleForKey(const QString& key) const;  // 0.0 when absent or not a number

    // Stores |value| under |key|; an invalid value, an empty string or an empty byte
    // array removes the key instead.
    void setObject(const QVariant& value, const QString& key);
    void setInteger(qint64 value, const QString& key);
    void removeObjectForKey(const QString& key);

    // Writes pending changes and re-reads the file, picking up other processes' writes.
    void synchronize();

signals:
    // After every write or removal (|key| is the key) and every registerDefaults (|key|
    // is empty), on the writing thread.
    void didChange(const QString& key);

private:
    static bool isRemovalValue(const QVariant& value);
    QVariant lockedObjectForKey(const QString& key) const;

    const QString mFilePath;
    mutable QMutex mMutex;
    std::unique_ptr<QSettings> mSettings; // guarded by mMutex
    QVariantMap mRegistrationDomain;      // guarded by mMutex
};

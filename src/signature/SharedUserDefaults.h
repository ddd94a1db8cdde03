#pragma once

#include "util/UserDefaults.h"

#include <QString>
#include <QVariant>

#include <memory>

// The settings suite shared with the helper process: one INI file inside the
// application-group container, <container>/Library/Preferences/<group id>.conf. The
// application writes it (by mirroring its own defaults and storing the bookmark); the
// helper only reads it. Accessors forward to the suite's QBUserDefaults.
class QBSharedUserDefaults
{
public:
    // The process-wide instance on suitePath(), made once on first use. Stops the process
    // when the container is unavailable: without it there is nothing to share.
    static QBSharedUserDefaults& sharedInstance();
    // Where the suite file lies, or an empty text when the container is unavailable.
    static QString suitePath();

    // A suite on an explicit file (tests, tools).
    explicit QBSharedUserDefaults(const QString& filePath);

    QBUserDefaults& suiteUserDefaults() { return *mSuite; }

    // Stores |value|; an invalid or empty value removes the key.
    void setObject(const QVariant& value, const QString& key) { mSuite->setObject(value, key); }
    QString stringForKey(const QString& key) const { return mSuite->stringForKey(key); }
    QVariant objectForKey(const QString& key) const { return mSuite->objectForKey(key); }
    qint64 integerForKey(const QString& key) const { return mSuite->integerForKey(key); }
    double doubleForKey(const QString& key) const { return mSuite->doubleForKey(key); }

private:
    std::unique_ptr<QBUserDefaults> mSuite;
};

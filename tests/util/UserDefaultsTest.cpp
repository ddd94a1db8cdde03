#include "util/UserDefaults.h"
#include "util/NotificationCenter.h"

#include "TestHome.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <tuple>

using namespace Qt::StringLiterals;

namespace {

class UserDefaultsTest : public ::testing::Test
{
protected:
    QBTestHome mHome;
    const QString mPath = mHome.filePath(u"config/test.conf"_s);
};

TEST_F(UserDefaultsTest, TypedReadersConvertWhatTheFileGivesBack)
{
    using Case = std::tuple<QString, QVariant, bool, qint64, double>; // stored, then read back
    const Case cases[] = {{u"absent"_s, QVariant(), false, 0, 0.0},
                          {u"integer"_s, qint64(42), true, 42, 42.0},
                          {u"fraction"_s, 2.5, true, 2, 2.5},
                          {u"true"_s, true, true, 1, 1.0},
                          {u"YES"_s, u"YES"_s, true, 1, 1.0},
                          {u"garbage"_s, u"abc"_s, false, 0, 0.0},
                          {u"data"_s, QByteArray("\0\1", 2), false, 0, 0.0}};
    {
        QBUserDefaults writer(mPath);
        for (const auto& [key, stored, asBool, asInteger, asDouble] : cases)
            writer.setObject(stored, key);
    }
    QBUserDefaults reader(mPath); // every value has made the trip through the file
    for (const auto& [key, stored, asBool, asInteger, asDouble] : cases) {
        SCOPED_TRACE(key.toStdString());
        EXPECT_EQ(reader.objectForKey(key), stored);
        EXPECT_EQ(reader.boolForKey(key), asBool);
        EXPECT_EQ(reader.integerForKey(key), asInteger);
        EXPECT_DOUBLE_EQ(reader.doubleForKey(key), asDouble);
    }
    EXPECT_EQ(reader.stringForKey(u"YES"_s), u"YES"_s);
}

TEST_F(UserDefaultsTest, RegisteredValuesFallBackEmptyValuesRemoveAndChangesAreAnnounced)
{
    QBUserDefaults defaults(mPath);
    QSignalSpy changes(&defaults, &QBUserDefaults::didChange);
    int posted = 0;
    auto& center = QBNotificationCenter::defaultCenter();
    const QBNotificationToken token = center.addObserver(
        QBUserDefaultsDidChangeNotification,
        [&](const QBNotification& notification) { posted += notification.object == &defaults; });

    defaults.registerDefaults({{u"Interval"_s, 120}, {u"Other"_s, 5}});
    defaults.setInteger(600, u"Interval"_s);
    defaults.setObject(u"x"_s, u"Text"_s);
    const QVariantMap all = defaults.dictionaryRepresentation();
    EXPECT_EQ(all.size(), 3);
    EXPECT_EQ(all.value(u"Interval"_s).toLongLong(), 600); // persistent wins
    for (const QVariant& empty : {QVariant(), QVariant(QString()), QVariant(QByteArray())}) {
        defaults.setObject(u"x"_s, u"Text"_s);
        defaults.setObject(empty, u"Text"_s);
        EXPECT_FALSE(defaults.objectForKey(u"Text"_s).isValid()) << empty.typeName();
    }
    defaults.removeObjectForKey(u"Interval"_s);
    EXPECT_EQ(defaults.integerForKey(u"Interval"_s), 120);
    center.removeObserver(token);
    EXPECT_EQ(changes.size(), 10);
    EXPECT_EQ(posted, 10);
    EXPECT_EQ(changes.first().at(0).toString(), QString()); // registerDefaults
    EXPECT_EQ(changes.last().at(0).toString(), u"Interval"_s);

    // Only the persistent domain reaches the file; another object picks it up on sync.
    QBUserDefaults other(mPath);
    EXPECT_FALSE(other.objectForKey(u"Other"_s).isValid());
    defaults.setInteger(7, u"N"_s);
    other.synchronize();
    EXPECT_EQ(other.integerForKey(u"N"_s), 7);
}

} // namespace

#include "util/UserDefaults.h"

#include "TestHome.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class UserDefaultsTest : public ::testing::Test
{
protected:
    QBTestHome mHome;
    const QString mPath = mHome.filePath(QStringLiteral("config/test.conf"));
};

TEST_F(UserDefaultsTest, TypedReadersConvertWhatTheFileGivesBack)
{
    struct Case
    {
        const char* key;
        QVariant stored;
        bool asBool;
        qint64 asInteger;
        double asDouble;
    };
    const Case cases[] = {
        {"absent", QVariant(), false, 0, 0.0},
        {"integer", qint64(42), true, 42, 42.0},
        {"fraction", 2.5, true, 2, 2.5},
        {"true", true, true, 1, 1.0},
        {"false", false, false, 0, 0.0},
        {"YES", QStringLiteral("YES"), true, 1, 1.0},
        {"garbage", QStringLiteral("abc"), false, 0, 0.0},
        {"-7", QStringLiteral("-7"), true, -7, -7.0},
    };
    {
        QBUserDefaults writer(mPath);
        for (const Case& c : cases) {
            writer.setObject(c.stored, QString::fromUtf8(c.key));
        }
        writer.setObject(QByteArray("\0\1", 2), QStringLiteral("data"));
    }
    QBUserDefaults reader(mPath); // every value has made the trip through the file
    for (const Case& c : cases) {
        const QString key = QString::fromUtf8(c.key);
        EXPECT_EQ(reader.boolForKey(key), c.asBool) << c.key;
        EXPECT_EQ(reader.integerForKey(key), c.asInteger) << c.key;
        EXPECT_DOUBLE_EQ(reader.doubleForKey(key), c.asDouble) << c.key;
    }
    EXPECT_EQ(reader.stringForKey(QStringLiteral("YES")), QStringLiteral("YES"));
    EXPECT_EQ(reader.objectForKey(QStringLiteral("data")), QVariant(QByteArray("\0\1", 2)));
}

TEST_F(UserDefaultsTest, RegisteredValuesFallBackAndEmptyValuesRemove)
{
    QBUserDefaults defaults(mPath);
    QSignalSpy changes(&defaults, &QBUserDefaults::didChange);
    defaults.registerDefaults({{QStringLiteral("Interval"), 120}, {QStringLiteral("Other"), 5}});
    defaults.setInteger(600, QStringLiteral("Interval"));
    defaults.setObject(QStringLiteral("x"), QStringLiteral("Text"));
    const QVariantMap all = defaults.dictionaryRepresentation();
    EXPECT_EQ(all.size(), 3);
    EXPECT_EQ(all.value(QStringLiteral("Interval")).toLongLong(), 600); // persistent wins

    for (const QVariant& empty : {QVariant(), QVariant(QString()), QVariant(QByteArray())}) {
        defaults.setObject(QStringLiteral("x"), QStringLiteral("Text"));
        defaults.setObject(empty, QStringLiteral("Text"));
        EXPECT_FALSE(defaults.objectForKey(QStringLiteral("Text")).isValid()) << empty.typeName();
    }
    defaults.removeObjectForKey(QStringLiteral("Interval"));
    EXPECT_EQ(defaults.integerForKey(QStringLiteral("Interval")), 120);
    EXPECT_EQ(changes.size(), 10);
    EXPECT_EQ(changes.first().at(0).toString(), QString()); // registerDefaults
    EXPECT_EQ(changes.last().at(0).toString(), QStringLiteral("Interval"));
    // Only the persistent domain reaches the file; another reader picks it up on sync.
    QBUserDefaults other(mPath);
    EXPECT_FALSE(other.objectForKey(QStringLiteral("Other")).isValid());
    defaults.setInteger(7, QStringLiteral("N"));
    other.synchronize();
    EXPECT_EQ(other.integerForKey(QStringLiteral("N")), 7);
}

TEST_F(UserDefaultsTest, StandardDefaultsFollowXdgConfigHome)
{
    const QString expected =
        mHome.filePath(QStringLiteral("xdg_config_home/Quillbox2/Quillbox2.conf"));
    EXPECT_EQ(QBUserDefaults::standardUserDefaultsPath(), expected);
    ::setenv("XDG_CONFIG_HOME", "relative/is/ignored", 1);
    EXPECT_EQ(QBUserDefaults::standardUserDefaultsPath(),
              mHome.filePath(QStringLiteral("home/.config/Quillbox2/Quillbox2.conf")));
    QBUserDefaults::resetStandardUserDefaults(mPath);
    EXPECT_EQ(QBUserDefaults::standardUserDefaults().filePath(), mPath);
    QBUserDefaults::resetStandardUserDefaults();
}

} // namespace

#include "util/UserDefaults.h"

#include "TestHome.h"

#include <QFileInfo>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class UserDefaultsTest : public ::testing::Test
{
protected:
    QString settingsPath() const { return mHome.filePath(QStringLiteral("config/test.conf")); }

    QBTestHome mHome;
};

TEST_F(UserDefaultsTest, ValuesSurviveReopeningTheFile)
{
    {
        QBUserDefaults defaults(settingsPath());
        defaults.setInteger(300, QStringLiteral("QBDefaultsRandomizeInterval"));
        defaults.setObject(QStringLiteral("/tmp/sig.txt"),
                           QStringLiteral("QBDefaultsSignatureOutputPath"));
        defaults.setObject(true, QStringLiteral("QBDefaultsAutoRandomize"));
        defaults.setObject(QByteArray("\x00\x01 bytes", 8), QStringLiteral("Data"));
    }
    EXPECT_TRUE(QFileInfo::exists(settingsPath()));

    QBUserDefaults reopened(settingsPath());
    EXPECT_EQ(reopened.integerForKey(QStringLiteral("QBDefaultsRandomizeInterval")), 300);
    EXPECT_EQ(reopened.stringForKey(QStringLiteral("QBDefaultsSignatureOutputPath")),
              QStringLiteral("/tmp/sig.txt"));
    EXPECT_TRUE(reopened.boolForKey(QStringLiteral("QBDefaultsAutoRandomize")));
    // Byte arrays keep their type, which the bookmark reader relies on.
    const QVariant data = reopened.objectForKey(QStringLiteral("Data"));
    EXPECT_EQ(data.typeId(), QMetaType::QByteArray);
    EXPECT_EQ(data.toByteArray(), QByteArray("\x00\x01 bytes", 8));
}

TEST_F(UserDefaultsTest, TypedReadersConvertOrFallBackToZero)
{
    QBUserDefaults defaults(settingsPath());
    struct Case
    {
        const char* name;
        QVariant stored;
        bool expectedBool;
        qint64 expectedInteger;
        double expectedDouble;
    };
    const Case cases[] = {
        {"absent", QVariant(), false, 0, 0.0},
        {"integer", QVariant(qint64(42)), true, 42, 42.0},
        {"zero", QVariant(0), false, 0, 0.0},
        {"double", QVariant(2.5), true, 2, 2.5},
        {"true", QVariant(true), true, 1, 1.0},
        {"false", QVariant(false), false, 0, 0.0},
        {"text YES", QVariant(QStringLiteral("YES")), true, 1, 1.0},
        {"text no", QVariant(QStringLiteral("no")), false, 0, 0.0},
        {"text garbage", QVariant(QStringLiteral("abc")), false, 0, 0.0},
        {"negative text", QVariant(QStringLiteral("-7")), true, -7, -7.0},
    };
    for (const Case& c : cases) {
        const QString key = QString::fromUtf8(c.name);
        defaults.setObject(c.stored, key);
    }
    // Read through a second object so every value has made the trip through the file.
    QBUserDefaults reread(settingsPath());
    for (const Case& c : cases) {
        const QString key = QString::fromUtf8(c.name);
        EXPECT_EQ(reread.boolForKey(key), c.expectedBool) << c.name;
        EXPECT_EQ(reread.integerForKey(key), c.expectedInteger) << c.name;
        EXPECT_DOUBLE_EQ(reread.doubleForKey(key), c.expectedDouble) << c.name;
    }
    EXPECT_TRUE(reread.stringForKey(QStringLiteral("absent")).isNull());
}

TEST_F(UserDefaultsTest, RegistrationDomainIsFallbackAndMergedIntoDictionary)
{
    QBUserDefaults defaults(settingsPath());
    defaults.registerDefaults({{QStringLiteral("Interval"), 120}, {QStringLiteral("Other"), 5}});
    EXPECT_EQ(defaults.integerForKey(QStringLiteral("Interval")), 120);

    defaults.setInteger(600, QStringLiteral("Interval"));
    defaults.setObject(QStringLiteral("x"), QStringLiteral("Written"));
    EXPECT_EQ(defaults.integerForKey(QStringLiteral("Interval")), 600);

    const QVariantMap all = defaults.dictionaryRepresentation();
    EXPECT_EQ(all.size(), 3);
    EXPECT_EQ(all.value(QStringLiteral("Interval")).toLongLong(), 600); // persistent wins
    EXPECT_EQ(all.value(QStringLiteral("Other")).toInt(), 5);
    EXPECT_EQ(all.value(QStringLiteral("Written")).toString(), QStringLiteral("x"));

    // Removing the persistent value uncovers the registered one again.
    defaults.removeObjectForKey(QStringLiteral("Interval"));
    EXPECT_EQ(defaults.integerForKey(QStringLiteral("Interval")), 120);
    // The registration domain is not written to the file.
    EXPECT_FALSE(QBUserDefaults(settingsPath()).objectForKey(QStringLiteral("Other")).isValid());
}

TEST_F(UserDefaultsTest, EmptyValuesRemoveTheKeyAndEveryChangeIsSignalled)
{
    QBUserDefaults defaults(settingsPath());
    QSignalSpy changes(&defaults, &QBUserDefaults::didChange);
    const QString key = QStringLiteral("Key");
    const QVariant removals[] = {QVariant(), QVariant(QString()), QVariant(QByteArray())};
    for (const QVariant& removal : removals) {
        defaults.setObject(QStringLiteral("value"), key);
        ASSERT_TRUE(defaults.objectForKey(key).isValid());
        defaults.setObject(removal, key);
        EXPECT_FALSE(defaults.objectForKey(key).isValid()) << removal.typeName();
        EXPECT_FALSE(defaults.dictionaryRepresentation().contains(key));
    }
    ASSERT_EQ(changes.size(), 6);
    EXPECT_EQ(changes.at(5).at(0).toString(), key);

    defaults.registerDefaults({{QStringLiteral("R"), 1}});
    ASSERT_EQ(changes.size(), 7);
    EXPECT_TRUE(changes.at(6).at(0).toString().isEmpty());
}

TEST_F(UserDefaultsTest, SecondReaderSeesWritesAfterSynchronize)
{
    QBUserDefaults writer(settingsPath());
    QBUserDefaults reader(settingsPath());
    EXPECT_EQ(reader.integerForKey(QStringLiteral("N")), 0);
    writer.setInteger(7, QStringLiteral("N"));
    reader.synchronize();
    EXPECT_EQ(reader.integerForKey(QStringLiteral("N")), 7);
    writer.removeObjectForKey(QStringLiteral("N"));
    reader.synchronize();
    EXPECT_FALSE(reader.objectForKey(QStringLiteral("N")).isValid());
}

TEST_F(UserDefaultsTest, StandardDefaultsFollowXdgConfigHome)
{
    const QString configHome = mHome.filePath(QStringLiteral("xdg_config_home"));
    EXPECT_EQ(QBUserDefaults::standardUserDefaultsPath(),
              configHome + QStringLiteral("/Quillbox2/Quillbox2.conf"));

    ::setenv("XDG_CONFIG_HOME", "relative/ignored", 1);
    EXPECT_EQ(QBUserDefaults::standardUserDefaultsPath(),
              mHome.filePath(QStringLiteral("home/.config/Quillbox2/Quillbox2.conf")));
    ::setenv("XDG_CONFIG_HOME", configHome.toLocal8Bit().constData(), 1);

    QBUserDefaults::resetStandardUserDefaults();
    QBUserDefaults::standardUserDefaults().setInteger(1, QStringLiteral("K"));
    EXPECT_TRUE(QFileInfo::exists(configHome + QStringLiteral("/Quillbox2/Quillbox2.conf")));

    QBUserDefaults::resetStandardUserDefaults(settingsPath());
    EXPECT_EQ(QBUserDefaults::standardUserDefaults().filePath(), settingsPath());
    QBUserDefaults::resetStandardUserDefaults();
}

} // namespace

#include "signature/SharedUserDefaults.h"
#include "signature/DefaultsMirror.h"
#include "signature/SettingsKeys.h"

#include "TestHome.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace {

class SharedUserDefaultsTest : public ::testing::Test
{
protected:
    QBTestHome mHome;
    QBUserDefaults mStandard{mHome.filePath(QStringLiteral("config/Quillbox2.conf"))};
    QBSharedUserDefaults mShared{mHome.filePath(QStringLiteral("container/suite.conf"))};
    QBDefaultsMirror mMirror{mStandard, mShared};
};

TEST_F(SharedUserDefaultsTest, KeysTableKeepsTheBookmarkOutOfMirroring)
{
    for (const QBSettingsKey& key : settingsKeys()) {
        const bool mirrored = key.store == QBSettingsStore::StandardMirroredToSuite;
        EXPECT_EQ(key.name.startsWith(kQBMirroredKeyPrefix), mirrored) << key.name.toStdString();
    }
    const QVariantMap registered = registeredDefaultSettings();
    ASSERT_EQ(registered.size(), 1);
    EXPECT_EQ(registered.value(QBDefaultsRandomizeInterval).toLongLong(), 120);
}

TEST_F(SharedUserDefaultsTest, MirroringCopiesRegisteredAndWrittenValuesOneWay)
{
    mStandard.registerDefaults(registeredDefaultSettings());
    EXPECT_EQ(mStandard.integerForKey(QBDefaultsRandomizeInterval), 120);
    EXPECT_FALSE(mShared.objectForKey(QBDefaultsRandomizeInterval).isValid());

    mStandard.setObject(QStringLiteral("/home/u/sig.txt"), QBDefaultsSignatureOutputPath);
    mStandard.setObject(true, QBDefaultsAutoRandomize);
    mStandard.setObject(QStringLiteral("not mirrored"), QStringLiteral("OtherKey"));
    mShared.setObject(QStringLiteral("suite only"), QStringLiteral("QBDefaultsFromSuiteOnly"));
    mMirror.mirrorToSharedDefaults();

    EXPECT_EQ(mShared.integerForKey(QBDefaultsRandomizeInterval), 120);
    EXPECT_EQ(mShared.stringForKey(QBDefaultsSignatureOutputPath),
              QStringLiteral("/home/u/sig.txt"));
    EXPECT_TRUE(mShared.suiteUserDefaults().boolForKey(QBDefaultsAutoRandomize));
    EXPECT_FALSE(mShared.objectForKey(QStringLiteral("OtherKey")).isValid());
    // The suite follows the application's defaults: a key they lack is removed there.
    EXPECT_FALSE(mShared.objectForKey(QStringLiteral("QBDefaultsFromSuiteOnly")).isValid());
    // Nothing flows back.
    EXPECT_FALSE(mStandard.objectForKey(QStringLiteral("QBDefaultsFromSuiteOnly")).isValid());

    // Removing a key in the application's defaults removes it from the suite next pass.
    mStandard.setObject(QVariant(), QBDefaultsSignatureOutputPath);
    mStandard.setInteger(600, QBDefaultsRandomizeInterval);
    mMirror.mirrorToSharedDefaults();
    EXPECT_FALSE(mShared.objectForKey(QBDefaultsSignatureOutputPath).isValid());
    EXPECT_EQ(mShared.integerForKey(QBDefaultsRandomizeInterval), 600);
}

TEST_F(SharedUserDefaultsTest, MirroringNeverTouchesTheBookmark)
{
    const QByteArray bookmark("{\"version\":1}");
    mShared.setObject(bookmark, QBPrivateDefaultsOutputFileSSB);
    // Whatever the application's defaults hold under that key.
    mStandard.setObject(QByteArray("other"), QBPrivateDefaultsOutputFileSSB);
    mMirror.mirrorToSharedDefaults();
    EXPECT_EQ(mShared.objectForKey(QBPrivateDefaultsOutputFileSSB).toByteArray(), bookmark);
    mStandard.removeObjectForKey(QBPrivateDefaultsOutputFileSSB);
    mMirror.mirrorToSharedDefaults();
    EXPECT_EQ(mShared.objectForKey(QBPrivateDefaultsOutputFileSSB).toByteArray(), bookmark);
}

TEST_F(SharedUserDefaultsTest, PassStartedDuringAPassDoesNothing)
{
    mStandard.setInteger(60, QBDefaultsRandomizeInterval);
    mStandard.setObject(QStringLiteral("Mono"), QBDefaultsEditorFontName);
    int suiteWrites = 0;
    int nestedCallsWhileMirroring = 0;
    QObject::connect(&mShared.suiteUserDefaults(), &QBUserDefaults::didChange, [&] {
        ++suiteWrites;
        if (mMirror.isMirroring()) {
            ++nestedCallsWhileMirroring;
        }
        mMirror.mirrorToSharedDefaults(); // as a change observer would
    });
    mMirror.mirrorToSharedDefaults();
    EXPECT_EQ(suiteWrites, 2);
    EXPECT_EQ(nestedCallsWhileMirroring, 2);
    EXPECT_FALSE(mMirror.isMirroring());
    EXPECT_EQ(mShared.integerForKey(QBDefaultsRandomizeInterval), 60);
}

TEST_F(SharedUserDefaultsTest, AnotherProcessReadsTheSuiteFile)
{
    // The process-wide suite lies in the container under this fixture's XDG_DATA_HOME.
    const QString suite = QBSharedUserDefaults::suitePath();
    EXPECT_EQ(suite, mHome.filePath(QStringLiteral(
                         "xdg_data_home/group.Q8B2X4K7LM.org.quillbox2/Library/Preferences/"
                         "group.Q8B2X4K7LM.org.quillbox2.conf")));
    QBSharedUserDefaults writer(suite);
    QBDefaultsMirror mirror(mStandard, writer);
    mStandard.registerDefaults(registeredDefaultSettings());
    mStandard.setObject(QStringLiteral("/tmp/Sig näme.txt"), QBDefaultsSignatureOutputPath);
    mStandard.setObject(true, QBDefaultsWarnForDuplicates);
    mStandard.setObject(false, QBDefaultsAutoRandomize);
    mirror.mirrorToSharedDefaults();
    writer.setObject(QByteArray("\x01\x02"), QBPrivateDefaultsOutputFileSSB);

    QProcess reader;
    reader.start(QStringLiteral(QB_SETTINGS_READER_PATH), {});
    ASSERT_TRUE(reader.waitForFinished(30000));
    ASSERT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().toStdString();
    const QString expected = QStringLiteral("QBDefaultsRandomizeInterval=120\n"
                                            "QBDefaultsSignatureOutputPath=/tmp/Sig näme.txt\n"
                                            "QBDefaultsEditorFontName=<absent>\n"
                                            "QBDefaultsClearTrailingEmptyLines=<absent>\n"
                                            "QBDefaultsWarnForDuplicates=true\n"
                                            "QBDefaultsAutoRandomize=false\n"
                                            "QBPrivateDefaultsOutputFileSSB=0102\n");
    EXPECT_EQ(QString::fromUtf8(reader.readAllStandardOutput()), expected);
}

} // namespace

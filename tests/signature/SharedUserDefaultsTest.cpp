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
    QBSharedUserDefaults mShared{QBSharedUserDefaults::suitePath()};
    QBDefaultsMirror mMirror{mStandard, mShared};
};

TEST_F(SharedUserDefaultsTest, MirroringCopiesQBDefaultsKeysOneWayAndSparesTheBookmark)
{
    const QByteArray bookmark("{\"version\":1}");
    mShared.setObject(bookmark, QBPrivateDefaultsOutputFileSSB);
    mShared.setObject(QStringLiteral("stale"), QStringLiteral("QBDefaultsGone"));
    mStandard.registerDefaults(registeredDefaultSettings());
    mStandard.setObject(QStringLiteral("/home/u/sig.txt"), QBDefaultsSignatureOutputPath);
    mStandard.setObject(QStringLiteral("no prefix"), QStringLiteral("OtherKey"));
    mStandard.setObject(QByteArray("other"), QBPrivateDefaultsOutputFileSSB);
    EXPECT_FALSE(mShared.objectForKey(QBDefaultsRandomizeInterval).isValid());
    mMirror.mirrorToSharedDefaults();

    EXPECT_EQ(mShared.integerForKey(QBDefaultsRandomizeInterval), 120); // the registered value
    EXPECT_EQ(mShared.stringForKey(QBDefaultsSignatureOutputPath),
              QStringLiteral("/home/u/sig.txt"));
    EXPECT_FALSE(mShared.objectForKey(QStringLiteral("OtherKey")).isValid());
    EXPECT_FALSE(mShared.objectForKey(QStringLiteral("QBDefaultsGone")).isValid());
    EXPECT_FALSE(mStandard.objectForKey(QStringLiteral("QBDefaultsGone")).isValid());
    EXPECT_EQ(mShared.objectForKey(QBPrivateDefaultsOutputFileSSB).toByteArray(), bookmark);

    mStandard.removeObjectForKey(QBDefaultsSignatureOutputPath);
    mMirror.mirrorToSharedDefaults();
    EXPECT_FALSE(mShared.objectForKey(QBDefaultsSignatureOutputPath).isValid());
}

TEST_F(SharedUserDefaultsTest, PassStartedDuringAPassDoesNothing)
{
    mStandard.setInteger(60, QBDefaultsRandomizeInterval);
    mStandard.setObject(QStringLiteral("Mono"), QBDefaultsEditorFontName);
    int suiteWrites = 0;
    QObject::connect(&mShared.suiteUserDefaults(), &QBUserDefaults::didChange, [&] {
        ++suiteWrites;
        EXPECT_TRUE(mMirror.isMirroring());
        mMirror.mirrorToSharedDefaults(); // as an observer of every change would
    });
    mMirror.mirrorToSharedDefaults();
    EXPECT_EQ(suiteWrites, 2);
    EXPECT_FALSE(mMirror.isMirroring());
}

TEST_F(SharedUserDefaultsTest, AnotherProcessReadsTheSuiteFile)
{
    mStandard.registerDefaults(registeredDefaultSettings());
    mStandard.setObject(QStringLiteral("/tmp/Sig näme.txt"), QBDefaultsSignatureOutputPath);
    mStandard.setObject(true, QBDefaultsWarnForDuplicates);
    mStandard.setObject(false, QBDefaultsAutoRandomize);
    mMirror.mirrorToSharedDefaults();
    mShared.setObject(QByteArray("\x01\x02"), QBPrivateDefaultsOutputFileSSB);

    EXPECT_TRUE(QBSharedUserDefaults::suitePath().endsWith(
        QStringLiteral("/group.Q8B2X4K7LM.org.quillbox2/Library/Preferences/"
                       "group.Q8B2X4K7LM.org.quillbox2.conf")));
    QProcess reader; // inherits this fixture's HOME and XDG_*
    reader.start(QStringLiteral(QB_SETTINGS_READER_PATH), {});
    ASSERT_TRUE(reader.waitForFinished(30000));
    ASSERT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().toStdString();
    EXPECT_EQ(QString::fromUtf8(reader.readAllStandardOutput()),
              QStringLiteral("QBDefaultsRandomizeInterval=120\n"
                             "QBDefaultsSignatureOutputPath=/tmp/Sig näme.txt\n"
                             "QBDefaultsEditorFontName=<absent>\n"
                             "QBDefaultsClearTrailingEmptyLines=<absent>\n"
                             "QBDefaultsWarnForDuplicates=true\n"
                             "QBDefaultsAutoRandomize=false\n"
                             "QBPrivateDefaultsOutputFileSSB=0102\n"));
}

} // namespace

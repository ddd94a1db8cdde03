#include "signature/FileBookmark.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

class FileBookmarkTest : public ::testing::Test
{
protected:
    QString path(const char* relative) const { return mHome.filePath(QString::fromUtf8(relative)); }

    QBTestHome mHome;
};

TEST_F(FileBookmarkTest, CreatingMakesAMissingFileButNotAFolder)
{
    const QString base = path("container/quotes.db");
    EXPECT_EQ(QBFileBookmark::create(path("out/sig.txt"), base).error,
              QStringLiteral("The folder '%1' does not exist").arg(path("out")));
    QDir().mkpath(path("out/folder.txt"));
    EXPECT_TRUE(QBFileBookmark::create(path("out/folder.txt"), base).data.isEmpty());
    EXPECT_FALSE(QBFileBookmark::create(path("out/sig.txt"), base).data.isEmpty());
    EXPECT_EQ(readFileBytes(path("out/sig.txt")), QByteArray(""));
    EXPECT_TRUE(QFile::exists(path("out/sig.txt")));
}

TEST_F(FileBookmarkTest, ResolvesRelativeFirstAndTellsReplacedFromMissing)
{
    ASSERT_TRUE(writeFileBytes(path("root/mail/sig.txt"), "text"));
    const QByteArray data =
        QBFileBookmark::create(path("root/mail/sig.txt"), path("root/container/quotes.db")).data;

    // The whole tree moved: only the relative path still leads to the file.
    ASSERT_TRUE(QDir().rename(path("root"), path("moved")));
    QBFileBookmark::Resolution resolved =
        QBFileBookmark::resolve(data, path("moved/container/quotes.db"));
    EXPECT_EQ(resolved.path, path("moved/mail/sig.txt"));
    EXPECT_FALSE(resolved.isStale);
    // From another base the absolute path is the fallback.
    ASSERT_TRUE(QDir().rename(path("moved"), path("root")));
    EXPECT_EQ(QBFileBookmark::resolve(data, path("x/y/quotes.db")).path, path("root/mail/sig.txt"));

    // Saved through a rename, as editors do: another file at the same path.
    ASSERT_TRUE(writeFileBytes(path("root/mail/new.txt"), "replacement"));
    ASSERT_TRUE(QFile::remove(path("root/mail/sig.txt")));
    ASSERT_TRUE(QFile::rename(path("root/mail/new.txt"), path("root/mail/sig.txt")));
    resolved = QBFileBookmark::resolve(data, path("root/container/quotes.db"));
    EXPECT_EQ(resolved.path, path("root/mail/sig.txt"));
    EXPECT_TRUE(resolved.isStale);

    ASSERT_TRUE(QFile::remove(path("root/mail/sig.txt")));
    EXPECT_EQ(
        QBFileBookmark::resolve(data, path("root/container/quotes.db")).error,
        QStringLiteral("The bookmarked file '%1' does not exist").arg(path("root/mail/sig.txt")));
    for (const char* garbage : {"", "not json", "[1]", "{\"version\":2}"}) {
        EXPECT_EQ(QBFileBookmark::resolve(garbage, path("root/container/quotes.db")).error,
                  QStringLiteral("The bookmark data cannot be decoded"))
            << garbage;
    }
}

} // namespace

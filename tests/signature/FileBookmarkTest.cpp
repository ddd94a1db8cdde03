#include "signature/FileBookmark.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

class FileBookmarkTest : public ::testing::Test
{
protected:
    QString path(const char* relative) const { return mHome.filePath(QString::fromUtf8(relative)); }

    // Puts a new file (a new inode) at |target| the way editors save: write aside, rename.
    void replaceFile(const QString& target)
    {
        const QString aside = target + QStringLiteral(".new");
        ASSERT_TRUE(writeFileBytes(aside, "replacement"));
        ASSERT_TRUE(QFile::remove(target));
        ASSERT_TRUE(QFile::rename(aside, target));
    }

    QBTestHome mHome;
};

TEST_F(FileBookmarkTest, CreatingMakesAMissingTargetAndRejectsBadFolders)
{
    const QString base = path("share/container/quotes.db");
    const QBFileBookmark::Creation made = QBFileBookmark::create(path("out/sig.txt"), base);
    EXPECT_TRUE(made.data.isEmpty()); // folder "out" does not exist
    EXPECT_EQ(made.error, QStringLiteral("The folder '%1' does not exist").arg(path("out")));

    QDir().mkpath(path("out"));
    const QBFileBookmark::Creation created = QBFileBookmark::create(path("out/sig.txt"), base);
    ASSERT_FALSE(created.data.isEmpty()) << created.error.toStdString();
    EXPECT_TRUE(QFileInfo(path("out/sig.txt")).isFile());
    EXPECT_EQ(QFileInfo(path("out/sig.txt")).size(), 0);

    QDir().mkpath(path("out/folder.txt"));
    EXPECT_TRUE(QBFileBookmark::create(path("out/folder.txt"), base).data.isEmpty());
}

TEST_F(FileBookmarkTest, UnwritableFolderIsAnError)
{
    const QString base = path("share/container/quotes.db");
    QDir().mkpath(path("locked"));
    QFile::setPermissions(path("locked"), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    if (QFileInfo(path("locked")).isWritable()) {
        GTEST_SKIP() << "running with privileges that ignore folder permissions";
    }
    const QBFileBookmark::Creation locked = QBFileBookmark::create(path("locked/sig.txt"), base);
    EXPECT_TRUE(locked.data.isEmpty());
    EXPECT_TRUE(locked.error.startsWith(QStringLiteral("Cannot create the file")))
        << locked.error.toStdString();
}

TEST_F(FileBookmarkTest, ResolvesRelativeToTheBaseThenByAbsolutePath)
{
    QDir().mkpath(path("root/container"));
    ASSERT_TRUE(writeFileBytes(path("root/mail/sig.txt"), "text"));
    const QBFileBookmark::Creation created =
        QBFileBookmark::create(path("root/mail/sig.txt"), path("root/container/quotes.db"));
    ASSERT_FALSE(created.data.isEmpty());

    QBFileBookmark::Resolution resolved =
        QBFileBookmark::resolve(created.data, path("root/container/quotes.db"));
    EXPECT_EQ(resolved.path, path("root/mail/sig.txt"));
    EXPECT_FALSE(resolved.isStale);

    // The whole tree moved: only the relative path still leads to the file.
    ASSERT_TRUE(QDir().rename(path("root"), path("moved")));
    resolved = QBFileBookmark::resolve(created.data, path("moved/container/quotes.db"));
    EXPECT_EQ(resolved.path, path("moved/mail/sig.txt"));
    EXPECT_FALSE(resolved.isStale);

    // Another base: the absolute path is the fallback.
    ASSERT_TRUE(QDir().rename(path("moved"), path("root")));
    resolved = QBFileBookmark::resolve(created.data, path("elsewhere/deep/quotes.db"));
    EXPECT_EQ(resolved.path, path("root/mail/sig.txt"));
}

TEST_F(FileBookmarkTest, ReplacedFileIsStaleAndMissingOrGarbageIsAnError)
{
    const QString base = path("container/quotes.db");
    ASSERT_TRUE(writeFileBytes(path("sig.txt"), "text"));
    const QByteArray data = QBFileBookmark::create(path("sig.txt"), base).data;
    ASSERT_FALSE(data.isEmpty());

    // Rewriting in place keeps the file's identity.
    ASSERT_TRUE(writeFileBytes(path("sig.txt"), "rewritten"));
    EXPECT_FALSE(QBFileBookmark::resolve(data, base).isStale);

    replaceFile(path("sig.txt"));
    const QBFileBookmark::Resolution stale = QBFileBookmark::resolve(data, base);
    EXPECT_EQ(stale.path, path("sig.txt"));
    EXPECT_TRUE(stale.isStale);

    ASSERT_TRUE(QFile::remove(path("sig.txt")));
    const QBFileBookmark::Resolution missing = QBFileBookmark::resolve(data, base);
    EXPECT_FALSE(missing.ok());
    EXPECT_EQ(missing.error,
              QStringLiteral("The bookmarked file '%1' does not exist").arg(path("sig.txt")));

    const QByteArray garbage[] = {"", "not json", "[1,2]", "{\"version\":2}",
                                  "{\"relativePath\":\"sig.txt\"}"};
    for (const QByteArray& bytes : garbage) {
        const QBFileBookmark::Resolution bad = QBFileBookmark::resolve(bytes, base);
        EXPECT_FALSE(bad.ok()) << bytes.constData();
        EXPECT_EQ(bad.error, QStringLiteral("The bookmark data cannot be decoded"));
    }
}

} // namespace

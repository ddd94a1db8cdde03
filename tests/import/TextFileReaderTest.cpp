#include "import/TextFileReader.h"

#include "TestHome.h"

#include <QFile>

#include <sys/stat.h>

#include <chrono>
#include <future>

#include <gtest/gtest.h>

using Reader = QBTextFileReader;

// A FIFO opened without a writer would wait for ever: refused at once. A file whose
// bytes never match the size it claims (here /proc's, which claims none) is refused as
// changing, not split from whatever was read.
TEST(TextFileReaderTest, OnlyAStillRegularFileIsRead)
{
    QBTestHome home;
    const QString fifo = home.filePath(QStringLiteral("quotes.txt"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    std::future<Reader::Result> reading =
        std::async(std::launch::async, [&fifo] { return Reader::readTextFile(fifo); });
    if (reading.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
        QFile writer(fifo); // lets the hung read return, so the test can end
        writer.open(QIODevice::WriteOnly);
        FAIL() << "reading a FIFO waited for a writer";
    }
    const Reader::Result fromFifo = reading.get();
    EXPECT_EQ(fromFifo.status, Reader::Status::NotText);
    EXPECT_EQ(fromFifo.error, QStringLiteral("cannot open '%1': not a regular file").arg(fifo));

    const Reader::Result changing = Reader::readTextFile(QStringLiteral("/proc/self/status"));
    EXPECT_EQ(changing.status, Reader::Status::NotText);
    EXPECT_TRUE(changing.error.contains(QStringLiteral("changed while it was read")))
        << changing.error.toStdString();
}

// A UTF-8 file cut in the middle of its last character stays UTF-8: only that
// character is lost, instead of every accent turning into mojibake.
TEST(TextFileReaderTest, CutOffFinalCharacterKeepsTheFileUtf8)
{
    QBTestHome home;
    const QString path = home.filePath(QStringLiteral("quotes.txt"));
    const QByteArray whole = QStringLiteral("Un été à Noël\n%\nÀ bientôt, l'été").toUtf8();
    ASSERT_TRUE(writeFileBytes(path, whole.first(whole.size() - 1)));
    const Reader::Result cut = Reader::readTextFile(path);
    ASSERT_TRUE(cut.ok()) << cut.error.toStdString();
    EXPECT_EQ(cut.encoding, QStringLiteral("UTF-8"));
    EXPECT_EQ(cut.text, QStringLiteral("Un été à Noël\n%\nÀ bientôt, l'ét\uFFFD"));

    // Invalid bytes elsewhere still make it Windows-1252.
    ASSERT_TRUE(writeFileBytes(path, "caf\xE9 \xC3"));
    EXPECT_EQ(Reader::readTextFile(path).encoding, QStringLiteral("Windows-1252"));
}

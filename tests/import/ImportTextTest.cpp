#include "import/QuoteBatchImportHelper.h"
#include "import/TextFileReader.h"

#include "TestHome.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using H = QBQuoteBatchImportHelper;
using Reader = QBTextFileReader;

namespace {

// |count| lines "line <n>" with |repeated| lines of |key| spread among them.
QString linesWith(int count, const QString& key, int repeated, const QString& other = {},
                  int otherRepeated = 0)
{
    QStringList lines;
    for (int index = 0; index < count; ++index) {
        if (index % 9 == 4 && repeated-- > 0)
            lines << key;
        else if (index % 9 == 7 && otherRepeated-- > 0)
            lines << other;
        else
            lines << u"line %1"_s.arg(index);
    }
    return lines.join(u'\n');
}

TEST(ImportTextTest, EncodingIsFoundFromTheBytes)
{
    const QString text = u"Ünïcödé “quotes” — 𝄞\n%\nsecond\n"_s;
    struct Case
    {
        const char* name;
        QByteArray bytes;
        const char* encoding; // nullptr: not text
        QString text;
    };
    const Case cases[] = {
        {"UTF-8", text.toUtf8(), "UTF-8", text},
        {"UTF-8 with mark", encodedText(text, QStringConverter::Utf8, true), "UTF-8", text},
        {"UTF-16BE with mark", encodedText(text, QStringConverter::Utf16BE, true), "UTF-16BE",
         text},
        {"UTF-32LE with mark", encodedText(text, QStringConverter::Utf32LE, true), "UTF-32LE",
         text},
        {"UTF-32BE with mark", encodedText(text, QStringConverter::Utf32BE, true), "UTF-32BE",
         text},
        {"UTF-16LE without mark", encodedText(text, QStringConverter::Utf16LE, false), "UTF-16LE",
         text},
        {"mark kept after the first",
         "\xEF\xBB\xBF\xEF\xBB\xBF"
         "a",
         "UTF-8", u"\uFEFFa"_s},
        {"Windows-1252 quotes",
         "\x93"
         "hi\x94 \x80 \x9F \x81",
         "Windows-1252", u"“hi” € Ÿ \u0081"_s},
        {"truncated UTF-8", "caf\xC3", "Windows-1252", u"cafÃ"_s},
        {"tab, form feed, SUB, ESC", "a\tb\fc\x1A\x1B", "UTF-8", u"a\tb\fc\x1A\x1B"_s},
        {"zero bytes both sides", QByteArray("ab\0\0cd\0\0", 8), nullptr, {}},
        {"control bytes, 2 in 100", QByteArray(98, 'x') + "\x01\x08", nullptr, {}},
        {"control bytes, 1 in 100 (overstrike)", QByteArray(98, 'x') + "_\b", "UTF-8",
         QString(98, u'x') + u"_\b"_s},
        {"UTF-16 holding a control",
         encodedText(u"a\u0002b"_s, QStringConverter::Utf16LE, false),
         nullptr,
         {}},
        {"empty", "", "UTF-8", {}},
    };
    for (const Case& c : cases) {
        const Reader::Result result = Reader::decodeText(c.bytes);
        SCOPED_TRACE(c.name);
        if (c.encoding == nullptr) {
            EXPECT_EQ(result.status, Reader::Status::NotText);
            EXPECT_FALSE(result.error.isEmpty());
            continue;
        }
        EXPECT_TRUE(result.ok()) << result.error.toStdString();
        EXPECT_EQ(result.encoding, QString::fromLatin1(c.encoding));
        EXPECT_EQ(result.text, c.text);
    }
}

TEST(ImportTextTest, FilesAreReadUpTo64MiBWithReadableReasons)
{
    QBTestHome home;
    const QString atLimit = home.filePath(u"limit.txt"_s);
    ASSERT_TRUE(writeFileBytes(atLimit, {}) && QFile(atLimit).resize(Reader::kMaxFileSize));
    // Read in full: all zero bytes, so binary rather than too large.
    EXPECT_EQ(Reader::readTextFile(atLimit).error, u"the file holds binary data (zero bytes)"_s);
    EXPECT_TRUE(
        Reader::readTextFile(home.filePath(u"missing.txt"_s)).error.startsWith(u"cannot open '"_s));
    EXPECT_EQ(Reader::decodeText("a\x07").error,
              u"the file holds binary data (1 control characters in 2, the first 0x07 at "
              u"character 2)"_s);
}

TEST(ImportTextTest, CandidatesAreLinesSeenTwiceAndInATenthOfTheLines)
{
    struct Case
    {
        const char* name;
        QString text;
        QStringList candidates;
    };
    const Case cases[] = {
        {"100 lines, 9 times", linesWith(100, u"%"_s, 9), {}},
        {"100 lines, 10 times", linesWith(100, u"%"_s, 10), {u"%"_s}},
        {"101 lines: threshold still 10", linesWith(101, u"%"_s, 10), {u"%"_s}},
        {"110 lines: threshold 11", linesWith(110, u"%"_s, 10), {}},
        {"most frequent first", linesWith(100, u"a"_s, 10, u"b"_s, 11), {u"b"_s, u"a"_s}},
        {"equal counts: first seen first",
         linesWith(100, u"b"_s, 10, u"a"_s, 10),
         {u"b"_s, u"a"_s}},
        {"short file: twice is enough", u"x\n%\ny\n%\nz"_s, {u"%"_s}},
        {"once is never enough", u"x\ny\nz"_s, {}},
        {"one line", u"x"_s, {}},
        {"spaces around count as the same", u"x\n  %\t\ny\n% \nz\n%"_s, {u"%"_s}},
        {"blank and white lines are one key", u"a\n\nb\n \t\nc"_s, {u"\n"_s}},
        {"trailing newline is a blank line", u"a\n%\nb\n%\nc\n"_s, {u"%"_s}},
        {"other line breaks split lines", u"a\u2028%\u2029b\u0085%\vc"_s, {u"%"_s}},
        {"two candidates, far apart", u"%\n%\n%\n%\n%\nq\nq\nr"_s, {u"%"_s, u"q"_s}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(H::detectCandidateSeparators(c.text), c.candidates);
    }
}

TEST(ImportTextTest, LineEndsSeparatorsAndSplitting)
{
    EXPECT_EQ(H::normalizedLineEnds(u"a\r\nb\rc\n\r\n\r\rd"_s), u"a\nb\nc\n\n\n\nd"_s);
    EXPECT_EQ(H::normalizedLineEnds(u"\n\r"_s), u"\n\n"_s);

    EXPECT_EQ(H::separatorForSplitting(u"%"_s), u"%\n"_s);
    EXPECT_EQ(H::separatorForSplitting(u"\n"_s), u"\n\n"_s);
    EXPECT_EQ(H::separatorForSplitting(u"%%\n"_s), u"%%\n"_s);

    // Plain, left to right, no overlap, empty and untrimmed pieces kept.
    EXPECT_EQ(H::splitText(u" a \n%\n%\nb\n%\n"_s, u"%\n"_s),
              QStringList({u" a \n"_s, {}, u"b\n"_s, {}}));
    EXPECT_EQ(H::splitText(u"a\n\n\nb"_s, u"\n\n"_s), QStringList({u"a"_s, u"\nb"_s}));
    EXPECT_EQ(H::splitText(u"a % b"_s, u"%\n"_s), QStringList({u"a % b"_s}));
}

} // namespace

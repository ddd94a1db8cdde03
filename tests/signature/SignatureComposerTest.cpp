#include "signature/SignatureComposer.h"

#include <gtest/gtest.h>

namespace {

using Composer = QBSignatureComposer;

QBSignatureSettings settings(const char* templateText, int wrapColumn = 0, int maxLines = 0,
                             bool html = false)
{
    return {QString::fromUtf8(templateText), wrapColumn, maxLines, html};
}

QByteArray composed(const char* quote, const QBSignatureSettings& with)
{
    return Composer::compose(QString::fromUtf8(quote), with).bytes;
}

TEST(SignatureComposerTest, TheDefaultTemplateWritesTheQuoteAloneAsBefore)
{
    // The bytes a signature file held before templates existed: the text, one final
    // line break added only when missing, trailing empty lines kept.
    const std::pair<const char*, QByteArray> cases[] = {
        {"", ""},
        {"One line", "One line\n"},
        {"Ends with its own\n", "Ends with its own\n"},
        {"Blank lines after\n\n\n", "Blank lines after\n\n\n"},
        {"Two\nlines  with  spaces ", "Two\nlines  with  spaces \n"},
        {"Ünïcode ☃ 漢字 and a {quote}", "Ünïcode ☃ 漢字 and a {quote}\n"},
    };
    for (const auto& [quote, expected] : cases) {
        EXPECT_EQ(composed(quote, QBSignatureSettings()), expected) << quote;
        // A template the settings page would refuse falls back to the quote alone.
        EXPECT_EQ(composed(quote, settings("Jane Doe")), expected) << quote;
    }
}

TEST(SignatureComposerTest, TemplateWrapsTheQuoteInTerminalCellsAndCountsItsLines)
{
    const QBSignatureSettings signed20 = settings("Jane Doe · +1 555 0100\n{quote}\n-- ", 20);
    const QBComposedSignature plain = Composer::compose(
        QStringLiteral("Short\nThe template's own lines are never wrapped, only the quote's."),
        signed20);
    EXPECT_EQ(plain.text, QStringLiteral("Jane Doe · +1 555 0100\nShort\nThe template's own\n"
                                         "lines are never\nwrapped, only the\nquote's.\n-- "));
    EXPECT_EQ(plain.quoteLines, 5);

    // Expected lines separated by "|".
    const std::tuple<const char*, int, const char*> wraps[] = {
        // Wide characters take two cells: three of them fill six.
        {"漢字漢 字漢字 漢", 7, "漢字漢|字漢字|漢"},
        // Combining marks take none: "é" written as e + U+0301 is one cell.
        {"e\u0301e\u0301e\u0301 e\u0301e\u0301 x", 6, "e\u0301e\u0301e\u0301 e\u0301e\u0301|x"},
        // A word longer than the column stays whole; the indentation stays with the line.
        {"  indented supercalifragilistic word", 10, "  indented|supercalifragilistic|word"},
        // No-break spaces hold words together; runs of spaces inside a line stay.
        {"a\u00a0b\u00a0c d  e", 5, "a\u00a0b\u00a0c|d  e"},
        {"fits exactly", 12, "fits exactly"},
        {"not wrapped at all when off", 0, "not wrapped at all when off"},
    };
    for (const auto& [quote, column, lines] : wraps) {
        EXPECT_EQ(Composer::wrappedLines(QString::fromUtf8(quote), column),
                  QString::fromUtf8(lines).split(QLatin1Char('|')))
            << quote;
    }
    EXPECT_EQ(Composer::displayWidth(QStringLiteral("漢a\u0301🙂\u200b")), 5);

    // The limit counts lines after wrapping; a final line break starts no line.
    const QString quote = QStringLiteral("one two three four\nfive\n");
    const std::tuple<int, int, bool> limits[] = {{0, 0, true},  {0, 2, true},   {0, 1, false},
                                                 {13, 3, true}, {13, 2, false}, {40, 2, true}};
    for (const auto& [column, maxLines, fits] : limits) {
        const QBSignatureSettings rules = settings("{quote}", column, maxLines);
        EXPECT_EQ(Composer::fits(quote, rules), fits) << column << " " << maxLines;
        EXPECT_EQ(Composer::compose(quote, rules).fits, fits) << column << " " << maxLines;
    }
    EXPECT_EQ(Composer::compose(QString(), settings("{quote}", 0, 1)).quoteLines, 0);
}

TEST(SignatureComposerTest, HtmlFilesGetAnEscapedFragmentWithTheQuoteInItsOwnBlock)
{
    const QBSignatureSettings html =
        settings("<b>Jane</b> & \"Co\"\n{quote}\nexample.org", 9, 0, true);
    EXPECT_EQ(composed("a < b && c > d\n\"quoted\"\n", html),
              "<div class=\"quillbox2-signature\">&lt;b&gt;Jane&lt;/b&gt; &amp; &quot;Co&quot;"
              "<div class=\"quillbox2-quote\">a &lt; b &amp;&amp;<br>\nc &gt; d<br>\n"
              "&quot;quoted&quot;</div>\nexample.org</div>\n");
    EXPECT_EQ(composed("Alone", settings("{quote}", 0, 0, true)),
              "<div class=\"quillbox2-signature\"><div class=\"quillbox2-quote\">Alone</div>"
              "</div>\n");

    EXPECT_TRUE(QBSignatureSettings::isHtmlPath(QStringLiteral("/home/u/sig.HTM")));
    EXPECT_TRUE(QBSignatureSettings::isHtmlPath(QStringLiteral("/home/u/sig.html")));
    EXPECT_FALSE(QBSignatureSettings::isHtmlPath(QStringLiteral("/home/u/html/sig.txt")));
}

} // namespace

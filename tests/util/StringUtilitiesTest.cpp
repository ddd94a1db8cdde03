#include "util/StringUtilities.h"

#include <gtest/gtest.h>

namespace {

QString q(const char16_t* text)
{
    return QString::fromUtf16(text);
}

TEST(StringUtilitiesTest, WhitespaceStripping)
{
    EXPECT_EQ(stringByStrippingWhitespace(q(u"\u2028 \t a b \r\n\u00a0")), q(u"a b"));
    EXPECT_EQ(stringByStrippingLeadingWhitespace(q(u"\n  a \n")), q(u"a \n"));
    EXPECT_EQ(stringByStrippingTrailingWhitespace(q(u"  a\n\n")), q(u"  a"));
    EXPECT_EQ(stringByStrippingWhitespace(q(u" \n\t ")), QString());
    // The inverted behaviour: only the whitespace is kept.
    EXPECT_EQ(stringByRemovingAllWhitespace(q(u"a b\tc")), q(u" \t"));
    EXPECT_EQ(stringByTrimmingLeadingCharactersInSet(
                  q(u"xxyx"), [](QChar character) { return character == QLatin1Char('x'); }),
              q(u"yx"));
}

TEST(StringUtilitiesTest, LinesAndWords)
{
    EXPECT_EQ(lineCount(q(u"a\n")), 2);
    EXPECT_EQ(lineCount(q(u"a\r\nb")), 3);
    EXPECT_EQ(lineCount(q(u"a\u2028b")), 2);

    const QString threeLines = q(u"one\ntwo\nthree");
    EXPECT_EQ(substringWithLines(threeLines, 2), q(u"one\ntwo"));
    EXPECT_EQ(substringWithLastLines(threeLines, 2), q(u"two\nthree"));

    EXPECT_EQ(wordCount(q(u"  Hello, world -- it's 2 o'clock!  ")), 5);
    EXPECT_EQ(wordCount(q(u"na\u00efve caf\u00e9")), 2);
}

TEST(StringUtilitiesTest, DecodingRepairsInvalidUTF8WithAsterisks)
{
    EXPECT_EQ(stringFromUnicodeCPPString("a\xff" + std::string("b")), q(u"a*b"));
    EXPECT_EQ(stringFromUnicodeCPPString(std::string("\xc3\xa9")), q(u"\u00e9"));
    EXPECT_EQ(stringFromUnicodeCPPString(std::string("x\xe2\x82")), q(u"x*")); // cut short
    // A leading byte order mark is part of the text, in valid and repaired input alike.
    EXPECT_EQ(stringFromUnicodeCPPString(std::string("\xef\xbb\xbfhi")), QChar(0xFEFF) + q(u"hi"));
    EXPECT_EQ(stringFromUnicodeCPPString(std::string("\xef\xbb\xbf\xff")), QChar(0xFEFF) + q(u"*"));
}

} // namespace

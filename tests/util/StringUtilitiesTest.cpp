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

TEST(StringUtilitiesTest, CharacterFilters)
{
    EXPECT_EQ(stringValidForFileNames(q(u"a/b:c d,e.f-g+h_i?\u00e9")), q(u"abc d,e.f-g+h_i\u00e9"));
    EXPECT_EQ(alphanumericString(q(u"R2-D2, \u00c5se!")), q(u"R2D2\u00c5se"));
    // Letters outside the Basic Multilingual Plane are kept whole, symbols dropped whole.
    EXPECT_EQ(alphanumericString(q(u"\U0001D400\U00020000 \U0001F600x")),
              q(u"\U0001D400\U00020000x"));
    EXPECT_EQ(stringValidForFileNames(q(u"\U00010400-\U0001F600.")), q(u"\U00010400-."));
    EXPECT_EQ(
        LMURLEncodedString(q(u"a b/:?#[]@!$&'()*+,;=%~\u00e9")),
        QStringLiteral("a%20b%2F%3A%3F%23%5B%5D%40%21%24%26%27%28%29%2A%2B%2C%3B%3D%25~%C3%A9"));
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

TEST(StringUtilitiesTest, SimilarityFollowsTheTwoBytePrefixRule)
{
    // m = 6, t = 1, j = 0.9444, prefix 2: 95.555 (a prefix of 3 would give 96.1).
    EXPECT_NEAR(similarityToString(q(u"MARTHA"), q(u"MARHTA")), 95.5556, 1e-3);
    EXPECT_EQ(similarityToString(q(u"ab"), q(u"ba")), 0.0);
    // Below the 0.7 threshold there is no prefix bonus: (3/4 + 3/4 + 3/3) / 3 * 100.
    EXPECT_NEAR(similarityToString(q(u"abcd"), q(u"abcx")), 83.3333 + 0.2 * (100 - 83.3333), 1e-3);
    // Common prefix of one byte only.
    EXPECT_NEAR(similarityToString(q(u"DWAYNE"), q(u"DUANE")), 82.2222 + 0.1 * (100 - 82.2222),
                1e-3);
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

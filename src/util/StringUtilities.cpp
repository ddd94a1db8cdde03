#include "util/StringUtilities.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>
#include <QTextBoundaryFinder>
#include <QUrl>

#include <utf8.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <vector>

namespace {

bool isAlphanumeric(char32_t codePoint)
{
    return QChar::isLetterOrNumber(codePoint) || QChar::isMark(codePoint);
}

bool isWhitespaceCodePoint(char32_t codePoint)
{
    return QChar::isSpace(codePoint);
}

// Filters by code point, so a letter outside the Basic Multilingual Plane (two UTF-16
// units) is judged, kept or dropped whole.
QString keepingOnly(const QString& text, bool (*keep)(char32_t))
{
    QString result;
    result.reserve(text.size());
    const QStringView view(text);
    for (qsizetype index = 0; index < view.size();) {
        const bool pair = index + 1 < view.size() && view[index].isHighSurrogate() &&
                          view[index + 1].isLowSurrogate();
        const char32_t codePoint =
            pair ? QChar::surrogateToUcs4(view[index], view[index + 1]) : view[index].unicode();
        const qsizetype length = pair ? 2 : 1;
        if (keep(codePoint))
            result.append(view.mid(index, length));
        index += length;
    }
    return result;
}

// Case-insensitive, compiled once, matched against the whole text.
bool fullyMatches(const QRegularExpression& pattern, const QString& text)
{
    if (!pattern.isValid())
        return false;
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() && match.capturedStart() == 0 && match.capturedLength() == text.size();
}

QStringList splitIntoLines(const QString& text)
{
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (isNewline(text.at(index))) {
            lines.append(text.mid(start, index - start));
            start = index + 1;
        }
    }
    lines.append(text.mid(start));
    return lines;
}

float jaroSimilarity(const std::string& first, const std::string& second)
{
    const auto length1 = static_cast<std::uint32_t>(first.size());
    const auto length2 = static_cast<std::uint32_t>(second.size());
    if (length1 == 0 || length2 == 0)
        return 0.0f;

    const std::uint32_t window =
        (length1 == 1 && length2 == 1) ? 0 : std::max(length1, length2) / 2 - 1;
    std::vector<bool> matched1(length1, false);
    std::vector<bool> matched2(length2, false);
    std::uint32_t matches = 0;
    for (std::uint32_t i = 0; i < length1; ++i) {
        const std::uint32_t from = i > window ? i - window : 0;
        const std::uint32_t to = std::min(i + window + 1, length2);
        for (std::uint32_t j = from; j < to; ++j) {
            if (!matched2[j] && first[i] == second[j]) {
                matched1[i] = matched2[j] = true;
                ++matches;
                break;
            }
        }
    }
    if (matches == 0)
        return 0.0f;

    float transpositions = 0.0f;
    std::uint32_t k = 0;
    for (std::uint32_t i = 0; i < length1; ++i) {
        if (!matched1[i])
            continue;
        while (!matched2[k])
            ++k;
        if (first[i] != second[k])
            transpositions += 0.5f;
        ++k;
    }
    const auto m = static_cast<float>(matches);
    return (m / static_cast<float>(length1) + m / static_cast<float>(length2) +
            (m - transpositions) / m) /
           3.0f;
}

} // namespace

bool isWhitespaceOrNewline(QChar character)
{
    return character.isSpace();
}

bool isNewline(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

bool isEmpty(const QString& text)
{
    return text.isEmpty();
}

QString stringByTrimmingLeadingCharactersInSet(const QString& text, QBCharacterSet set)
{
    qsizetype start = 0;
    while (start < text.size() && set(text.at(start)))
        ++start;
    return text.mid(start);
}

QString stringByTrimmingTrailingCharactersInSet(const QString& text, QBCharacterSet set)
{
    qsizetype end = text.size();
    while (end > 0 && set(text.at(end - 1)))
        --end;
    return text.left(end);
}

QString stringByStrippingWhitespace(const QString& text)
{
    return stringByStrippingTrailingWhitespace(stringByStrippingLeadingWhitespace(text));
}

QString stringByStrippingLeadingWhitespace(const QString& text)
{
    return stringByTrimmingLeadingCharactersInSet(text, isWhitespaceOrNewline);
}

QString stringByStrippingTrailingWhitespace(const QString& text)
{
    return stringByTrimmingTrailingCharactersInSet(text, isWhitespaceOrNewline);
}

QString stringByRemovingAllWhitespace(const QString& text)
{
    return keepingOnly(text, isWhitespaceCodePoint);
}

QByteArray c_str(const QString& text)
{
    return text.toUtf8();
}

QString stringValidForFileNames(const QString& text)
{
    return keepingOnly(text, [](char32_t codePoint) {
        return isAlphanumeric(codePoint) ||
               (codePoint < 0x80 && QStringView(u" ,.-+_").contains(QChar(codePoint)));
    });
}

QString alphanumericString(const QString& text)
{
    return keepingOnly(text, isAlphanumeric);
}

QString LMURLEncodedString(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString safePercentString(const QString& text)
{
    QString result = text;
    return result.replace(QLatin1Char('%'), QStringLiteral("<PERCENT_SIGN>"));
}

QString reverseString(const QString& text)
{
    QString result;
    result.reserve(text.size());
    std::reverse_copy(text.cbegin(), text.cend(), std::back_inserter(result));
    return result;
}

bool isValidHTTPAddress(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral(
        R"(\b(https?):\/\/[\-A-Za-z0-9+&@#\/%?=~_|!:,.;]*[\-A-Za-z0-9+&@#\/%=~_|])"));
    return pattern.match(text).hasMatch();
}

bool isValidEmail(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral(
            R"((?:[a-z0-9!#$%\&'*+/=?\^_`{|}~-]+(?:\.[a-z0-9!#$%\&'*+/=?\^_`{|}~-]+)*|"(?:[\x01-\x08\x0b\x0c\x0e-\x1f\x21\x23-\x5b\x5d-\x7f]|\\[\x01-\x09\x0b\x0c\x0e-\x7f])*")@(?:(?:[a-z0-9](?:[a-z0-9-]*[a-z0-9])?\.)+[a-z0-9](?:[a-z0-9-]*[a-z0-9])?|\[(?:(?:25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)\.){3}(?:25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?|[a-z0-9-]*[a-z0-9]:(?:[\x01-\x08\x0b\x0c\x0e-\x1f\x21-\x5a\x53-\x7f]|\\[\x01-\x09\x0b\x0c\x0e-\x7f])+)\]))"),
        QRegularExpression::CaseInsensitiveOption);
    return fullyMatches(pattern, text);
}

bool isValidInternetProtocolAddress(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral(
            R"(\b(?:(?:2(?:[0-4][0-9]|5[0-5])|[0-1]?[0-9]?[0-9])\.){3}(?:(?:2([0-4][0-9]|5[0-5])|[0-1]?[0-9]?[0-9]))\b)"),
        QRegularExpression::CaseInsensitiveOption);
    return fullyMatches(pattern, text);
}

bool containsString(const QString& text, const QString& other, Qt::CaseSensitivity options)
{
    return text.contains(other, options);
}

bool containsStringInsensitive(const QString& text, const QString& other)
{
    return containsString(text, other, Qt::CaseInsensitive);
}

int lineCount(const QString& text)
{
    return static_cast<int>(splitIntoLines(text).size());
}

int wordCount(const QString& text)
{
    // A word is a segment between word boundaries that holds a letter or digit, so
    // runs of spaces and punctuation do not count.
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    int words = 0;
    qsizetype start = 0;
    for (qsizetype end = finder.toNextBoundary(); end != -1; end = finder.toNextBoundary()) {
        const QStringView segment = QStringView(text).mid(start, end - start);
        if (std::any_of(segment.begin(), segment.end(),
                        [](QChar character) { return character.isLetterOrNumber(); }))
            ++words;
        start = end;
    }
    return words;
}

QString substringWithLines(const QString& text, int count)
{
    const QStringList lines = splitIntoLines(text);
    if (lines.size() <= count)
        return text;
    return lines.first(std::max(count, 0)).join(QLatin1Char('\n'));
}

QString substringWithLastLines(const QString& text, int count)
{
    const QStringList lines = splitIntoLines(text);
    if (lines.size() <= count)
        return text;
    return lines.last(std::max(count, 0)).join(QLatin1Char('\n'));
}

double similarityToString(const QString& text, const QString& other)
{
    const std::string first = text.toStdString();
    const std::string second = other.toStdString();
    const float jaro = jaroSimilarity(first, second);
    if (!(jaro > 0.7f))
        return static_cast<double>(jaro) * 100.0;

    const std::size_t prefixLimit = std::min({first.size(), second.size(), std::size_t{2}});
    std::size_t prefix = 0;
    while (prefix < prefixLimit && first[prefix] == second[prefix])
        ++prefix;
    const float winkler = std::fma(static_cast<float>(prefix) * 0.1f, 1.0f - jaro, jaro);
    return static_cast<double>(winkler) * 100.0;
}

QString stringFromUnicodeCPPString(const std::string& bytes)
{
    // Qt's decoder drops a leading byte order mark; here it is text like any other, so
    // that a quote comes back byte for byte.
    static constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (std::string_view(bytes).starts_with(kByteOrderMark)) {
        return QChar(0xFEFF) + stringFromUnicodeCPPString(bytes.substr(kByteOrderMark.size()));
    }
    // One decoding pass for valid text; only a failed one pays for the repair.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    if (!decoder.hasError())
        return decoded;
    std::string repaired;
    repaired.reserve(bytes.size());
    utf8::replace_invalid(bytes.begin(), bytes.end(), std::back_inserter(repaired), U'*');
    return QString::fromStdString(repaired);
}

#include "signature/SignatureComposer.h"

#include "signature/SettingsKeys.h"
#include "util/UserDefaults.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

// Generous bounds, so a hand-edited setting cannot make a wrap or count overflow.
constexpr qint64 kLargestWrapColumn = 10000;
constexpr qint64 kLargestLineLimit = 100000;

// Characters a terminal shows two cells wide: the East Asian wide and full-width
// blocks and the emoji that are shown as pictures, sorted by first code point.
constexpr std::array<std::pair<char32_t, char32_t>, 40> kWideRanges{{
    {0x1100, 0x115F}, {0x231A, 0x231B}, {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},
    {0x23F3, 0x23F3}, {0x25FD, 0x25FE}, {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693}, {0x26A1, 0x26A1}, {0x26AA, 0x26AB},   {0x26BD, 0x26BE},   {0x26C4, 0x26C5},
    {0x26CE, 0x26CE}, {0x26D4, 0x26D4}, {0x26EA, 0x26EA},   {0x26F2, 0x26F5},   {0x26FA, 0x26FD},
    {0x2705, 0x2705}, {0x270A, 0x270B}, {0x2728, 0x2728},   {0x274C, 0x274E},   {0x2753, 0x2757},
    {0x2795, 0x2797}, {0x2B1B, 0x2B1C}, {0x2B50, 0x2B55},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},
    {0xA960, 0xA97F}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F680, 0x1FAFF}, {0x20000, 0x3FFFD},
}};

bool isBreakableSpace(QChar character)
{
    // Not the no-break space: whoever typed it asked for the words to stay together.
    return character == u' ' || character == u'\t';
}

QStringList wrappedLine(const QString& line, int column)
{
    QStringList lines;
    QString current;
    int currentWidth = 0;
    bool first = true;
    qsizetype index = 0;
    while (index < line.size()) {
        const qsizetype spaceStart = index;
        while (index < line.size() && isBreakableSpace(line[index])) {
            ++index;
        }
        const qsizetype wordStart = index;
        while (index < line.size() && !isBreakableSpace(line[index])) {
            ++index;
        }
        if (wordStart == index) {
            break; // spaces at the end of a wrapped line would only push it over the column
        }
        const QStringView spaces = QStringView(line).sliced(spaceStart, wordStart - spaceStart);
        const QStringView word = QStringView(line).sliced(wordStart, index - wordStart);
        const int spacesWidth = QBSignatureComposer::displayWidth(spaces);
        const int wordWidth = QBSignatureComposer::displayWidth(word);
        if (first || currentWidth + spacesWidth + wordWidth <= column) {
            // The first word keeps the line's indentation.
            current += spaces;
            current += word;
            currentWidth += spacesWidth + wordWidth;
            first = false;
            continue;
        }
        lines.append(current);
        current = word.toString();
        currentWidth = wordWidth;
    }
    lines.append(current);
    return lines;
}

QString htmlLines(const QString& text)
{
    return text.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>\n"));
}

// The quote in a block of its own, so a mail client's styles for blocks apply; the
// template's text around it, escaped, with its line breaks kept.
QString htmlFragment(const QStringList& templateParts, QStringList quoteLines)
{
    quoteLines.resize(QBSignatureComposer::lineCount(quoteLines));
    const QString quoteBlock = QStringLiteral("<div class=\"quillbox2-quote\">") +
                               htmlLines(quoteLines.join(QLatin1Char('\n'))) +
                               QStringLiteral("</div>");
    QString body;
    for (qsizetype index = 0; index < templateParts.size(); ++index) {
        QString part = templateParts[index];
        // The block breaks the line itself; the template's own break beside it would
        // add an empty line.
        if (index > 0 && part.startsWith(QLatin1Char('\n'))) {
            part.remove(0, 1);
        }
        if (index + 1 < templateParts.size() && part.endsWith(QLatin1Char('\n'))) {
            part.chop(1);
        }
        if (index > 0) {
            body += quoteBlock;
            if (!part.isEmpty()) {
                body += QLatin1Char('\n');
            }
        }
        body += htmlLines(part);
    }
    return QStringLiteral("<div class=\"quillbox2-signature\">") + body + QStringLiteral("</div>");
}

} // namespace

QBSignatureSettings QBSignatureSettings::fromDefaults(const QBUserDefaults& defaults)
{
    QBSignatureSettings settings;
    const QString templateText = defaults.stringForKey(QBDefaultsSignatureTemplate);
    if (isUsableTemplate(templateText)) {
        settings.templateText = templateText;
    }
    settings.wrapColumn = static_cast<int>(
        std::clamp(defaults.integerForKey(QBDefaultsSignatureWrapColumn), 0LL, kLargestWrapColumn));
    settings.maxLines = static_cast<int>(
        std::clamp(defaults.integerForKey(QBDefaultsSignatureMaxLines), 0LL, kLargestLineLimit));
    settings.html = isHtmlPath(defaults.stringForKey(QBDefaultsSignatureOutputPath));
    return settings;
}

bool QBSignatureSettings::isUsableTemplate(const QString& templateText)
{
    return templateText.contains(kQuotePlaceholder);
}

bool QBSignatureSettings::isHtmlPath(const QString& path)
{
    return path.endsWith(QStringLiteral(".html"), Qt::CaseInsensitive) ||
           path.endsWith(QStringLiteral(".htm"), Qt::CaseInsensitive);
}

int QBSignatureComposer::displayWidth(char32_t codePoint)
{
    if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0)) {
        return codePoint == U'\t' ? 1 : 0;
    }
    if (codePoint < 0x300) {
        return 1; // Latin: the common case, before any table
    }
    switch (QChar::category(codePoint)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        break;
    }
    if (codePoint >= 0x1160 && codePoint <= 0x11FF) {
        return 0; // Hangul vowels and finals join the syllable before them
    }
    const auto range =
        std::upper_bound(kWideRanges.cbegin(), kWideRanges.cend(), codePoint,
                         [](char32_t value, const std::pair<char32_t, char32_t>& entry) {
                             return value < entry.first;
                         });
    return range != kWideRanges.cbegin() && codePoint <= std::prev(range)->second ? 2 : 1;
}

int QBSignatureComposer::displayWidth(QStringView text)
{
    int width = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        char32_t codePoint = text[index].unicode();
        if (QChar::isHighSurrogate(codePoint) && index + 1 < text.size() &&
            text[index + 1].isLowSurrogate()) {
            codePoint = QChar::surrogateToUcs4(text[index], text[index + 1]);
            ++index;
        }
        width += displayWidth(codePoint);
    }
    return width;
}

QStringList QBSignatureComposer::wrappedLines(const QString& quote, int column)
{
    const QStringList lines = quote.split(QLatin1Char('\n'));
    if (column <= 0) {
        return lines;
    }
    QStringList wrapped;
    for (const QString& line : lines) {
        if (displayWidth(line) <= column) {
            wrapped.append(line);
        } else {
            wrapped.append(wrappedLine(line, column));
        }
    }
    return wrapped;
}

int QBSignatureComposer::lineCount(const QStringList& lines)
{
    const qsizetype count =
        !lines.isEmpty() && lines.constLast().isEmpty() ? lines.size() - 1 : lines.size();
    return static_cast<int>(count);
}

bool QBSignatureComposer::fits(const QString& quote, const QBSignatureSettings& settings)
{
    if (settings.maxLines <= 0) {
        return true;
    }
    // Wrapping only adds lines, so too many before it settles the question.
    if (quote.count(QLatin1Char('\n')) > settings.maxLines) {
        return false;
    }
    return lineCount(wrappedLines(quote, settings.wrapColumn)) <= settings.maxLines;
}

QBComposedSignature QBSignatureComposer::compose(const QString& quote,
                                                 const QBSignatureSettings& settings)
{
    const QString templateText = QBSignatureSettings::isUsableTemplate(settings.templateText)
                                     ? settings.templateText
                                     : QBSignatureSettings::kQuotePlaceholder;
    // Split first: a quote that itself holds the placeholder is not expanded again.
    const QStringList parts = templateText.split(QBSignatureSettings::kQuotePlaceholder);
    const QStringList lines = wrappedLines(quote, settings.wrapColumn);

    QBComposedSignature composed;
    composed.quoteLines = lineCount(lines);
    composed.fits = settings.maxLines <= 0 || composed.quoteLines <= settings.maxLines;
    composed.text = parts.join(lines.join(QLatin1Char('\n')));
    composed.bytes = settings.html ? htmlFragment(parts, lines).toUtf8() : composed.text.toUtf8();
    // A text file ends with a line break; without one, a mail client that puts the
    // signature above the quoted text glues the next line to it.
    if (!composed.bytes.isEmpty() && !composed.bytes.endsWith('\n')) {
        composed.bytes.append('\n');
    }
    return composed;
}

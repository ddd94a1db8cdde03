#include "import/QuoteTextAnalysis.h"

#include <QHash>
#include <QStringView>

#include <algorithm>
#include <vector>

namespace {

using Kind = QBSeparatorChoice::Kind;

bool isBlank(QStringView text)
{
    return text.trimmed().isEmpty();
}

const QString kFortuneSeparator = QStringLiteral("%");

// Fortune's own rule: "%" at the start of the line, white space after it allowed. An
// indented "%" belongs to the quote (ASCII art draws with it).
bool isFortuneSeparator(QStringView line)
{
    return line.startsWith(u'%') && isBlank(line.sliced(1));
}

// Calls |line| with each line of |text| and the offset where it starts. The line break
// that ends the text ends its last line; it does not begin another one.
template <typename LineFunction> void forEachLine(QStringView text, LineFunction line)
{
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = text.indexOf(u'\n', start);
        if (end < 0)
            end = text.size();
        line(text.sliced(start, end - start), start);
        start = end + 1;
    }
}

// Calls |piece| with every non-blank piece between separator lines.
template <typename SeparatorTest, typename PieceFunction>
void forEachPiece(QStringView text, SeparatorTest isSeparator, PieceFunction piece)
{
    qsizetype pieceStart = 0;
    qsizetype pieceEnd = 0;
    const auto finishPiece = [&] {
        // A separator on the last line without a line break puts the start past the end.
        if (pieceEnd <= pieceStart)
            return;
        const QStringView candidate = text.sliced(pieceStart, pieceEnd - pieceStart);
        if (!isBlank(candidate))
            piece(candidate);
    };
    forEachLine(text, [&](QStringView line, qsizetype start) {
        if (isSeparator(line)) {
            finishPiece();
            pieceStart = start + line.size() + 1;
            pieceEnd = pieceStart;
        } else {
            pieceEnd = start + line.size();
        }
    });
    finishPiece();
}

template <typename PieceFunction>
void forEachQuote(const QBSeparatorChoice& choice, QStringView text, PieceFunction piece)
{
    switch (choice.kind) {
    case Kind::Line: {
        if (choice.line == kFortuneSeparator) {
            forEachPiece(text, isFortuneSeparator, piece);
            return;
        }
        const QStringView separator(choice.line);
        forEachPiece(
            text, [separator](QStringView line) { return line.trimmed() == separator; }, piece);
        return;
    }
    case Kind::BlankLine:
        forEachPiece(text, isBlank, piece);
        return;
    case Kind::OnePerLine:
        forEachLine(text, [&piece](QStringView line, qsizetype) {
            if (!isBlank(line))
                piece(line);
        });
        return;
    case Kind::WholeFile:
        forEachPiece(
            text, [](QStringView) { return false; }, piece);
        return;
    }
}

qsizetype countQuotes(const QBSeparatorChoice& choice, QStringView text)
{
    qsizetype count = 0;
    forEachQuote(choice, text, [&count](QStringView) { ++count; });
    return count;
}

// "* * *", "----", "~~~": a line of nothing but marks.
bool isDecoration(QStringView key)
{
    constexpr qsizetype kLongestDecoration = 40;
    return !key.isEmpty() && key.size() <= kLongestDecoration &&
           std::none_of(key.begin(), key.end(), [](QChar c) { return c.isLetterOrNumber(); });
}

struct LineTally
{
    qsizetype count = 0;
    qsizetype firstLine = 0;
};

} // namespace

QStringList QBSeparatorChoice::split(const QString& normalizedText) const
{
    QStringList quotes;
    forEachQuote(*this, normalizedText,
                 [&quotes](QStringView quote) { quotes << quote.toString(); });
    return quotes;
}

QBSeparatorChoice QBSeparatorChoice::fromName(const QString& name)
{
    if (name == u"blank")
        return {Kind::BlankLine, {}};
    if (name == u"line")
        return {Kind::OnePerLine, {}};
    if (name == u"whole")
        return {Kind::WholeFile, {}};
    return {Kind::Line, name.trimmed()};
}

QString QBSeparatorChoice::name() const
{
    switch (kind) {
    case Kind::Line:
        return line;
    case Kind::BlankLine:
        return QStringLiteral("blank");
    case Kind::OnePerLine:
        return QStringLiteral("line");
    case Kind::WholeFile:
        break;
    }
    return QStringLiteral("whole");
}

QBQuoteTextAnalysis QBQuoteTextAnalysis::analyze(const QString& normalizedText)
{
    // Keys are views into the text: no line is copied while counting.
    QHash<QStringView, LineTally> histogram;
    qsizetype lineCount = 0;
    qsizetype blankLines = 0;
    qsizetype fortuneSeparators = 0;
    forEachLine(normalizedText, [&](QStringView line, qsizetype) {
        fortuneSeparators += isFortuneSeparator(line) ? 1 : 0;
        const QStringView key = line.trimmed();
        if (key.isEmpty()) {
            ++blankLines;
        } else {
            LineTally& tally = histogram[key];
            if (tally.count++ == 0)
                tally.firstLine = lineCount;
        }
        ++lineCount;
    });

    std::vector<std::pair<QStringView, LineTally>> decorations;
    std::vector<std::pair<QStringView, LineTally>> repeatedLines;
    const qsizetype threshold = lineCount / 10;
    for (auto entry = histogram.cbegin(); entry != histogram.cend(); ++entry) {
        if (entry->count < 2 || entry.key() == kFortuneSeparator)
            continue;
        if (isDecoration(entry.key()))
            decorations.emplace_back(entry.key(), entry.value());
        else if (entry->count >= threshold)
            repeatedLines.emplace_back(entry.key(), entry.value());
    }
    const auto mostFrequentFirst = [](const auto& left, const auto& right) {
        if (left.second.count != right.second.count)
            return left.second.count > right.second.count;
        return left.second.firstLine < right.second.firstLine;
    };
    std::sort(decorations.begin(), decorations.end(), mostFrequentFirst);
    std::sort(repeatedLines.begin(), repeatedLines.end(), mostFrequentFirst);
    // Every choice offered costs a pass over the text, and ASCII art repeats thousands of
    // lines without letters; nobody chooses among more than a few.
    constexpr std::size_t kMostChoicesOfAKind = 5;
    if (decorations.size() > kMostChoicesOfAKind)
        decorations.resize(kMostChoicesOfAKind);
    if (repeatedLines.size() > kMostChoicesOfAKind)
        repeatedLines.resize(kMostChoicesOfAKind);

    QBQuoteTextAnalysis analysis;
    const auto offer = [&](QBSeparatorChoice choice) {
        choice.quoteCount = countQuotes(choice, normalizedText);
        // A separator that cuts nothing off is no way of cutting.
        const bool cuts = choice.quoteCount >= 2 || choice.kind == Kind::OnePerLine ||
                          choice.kind == Kind::WholeFile;
        if (cuts && choice.quoteCount > 0)
            analysis.choices << choice;
        return cuts;
    };
    // A "%" line says fortune file even when it only ends the file's single quote.
    bool fortune = false;
    if (fortuneSeparators > 0) {
        QBSeparatorChoice percent{Kind::Line, kFortuneSeparator};
        percent.quoteCount = countQuotes(percent, normalizedText);
        fortune = percent.quoteCount > 0;
        if (fortune)
            analysis.choices << percent;
    }
    qsizetype decorationsOffered = 0;
    for (const auto& [key, tally] : decorations)
        decorationsOffered += offer({Kind::Line, key.toString()}) ? 1 : 0;
    const bool blankLinesOffered = blankLines > 0 && offer({Kind::BlankLine, {}});
    qsizetype repeatedLinesOffered = 0;
    for (const auto& [key, tally] : repeatedLines)
        repeatedLinesOffered += offer({Kind::Line, key.toString()}) ? 1 : 0;
    const qsizetype linesWithText = lineCount - blankLines;
    offer({Kind::OnePerLine, {}});
    offer({Kind::WholeFile, {}});

    // Fewer than this many lines without any separator may as well be one quote.
    constexpr qsizetype kFewestLinesForOnePerLine = 10;
    if (fortune)
        analysis.clear = true;
    else if (decorationsOffered > 0)
        analysis.clear = decorationsOffered == 1;
    else if (blankLinesOffered)
        analysis.clear = repeatedLinesOffered == 0;
    else
        analysis.clear = repeatedLinesOffered == 0 && linesWithText >= kFewestLinesForOnePerLine;
    return analysis;
}

QBQuoteTextAnalysis QBQuoteTextAnalysis::analyzeFortuneFile(const QString& normalizedText,
                                                            QChar delimiter)
{
    QBQuoteTextAnalysis analysis = analyze(normalizedText);
    QBSeparatorChoice fortune{Kind::Line, QString(delimiter)};
    analysis.choices.removeOne(fortune);
    fortune.quoteCount = countQuotes(fortune, normalizedText);
    if (fortune.quoteCount > 0) {
        analysis.choices.prepend(fortune);
        analysis.clear = true;
    }
    return analysis;
}

bool QBQuoteTextAnalysis::isSingleQuote() const
{
    return !choices.isEmpty() &&
           std::all_of(choices.cbegin(), choices.cend(),
                       [](const QBSeparatorChoice& choice) { return choice.quoteCount == 1; });
}

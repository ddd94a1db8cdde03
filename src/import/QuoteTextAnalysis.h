#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One way of cutting a text into quotes. Every way works on whole lines: a separator
// line ends the quote before it and is not part of any quote, and pieces that hold
// nothing but white space are dropped.
struct QBSeparatorChoice
{
    enum class Kind
    {
        Line,       // a line of its own, compared trimmed ("%", "* * *", "----")
        BlankLine,  // one or more blank lines
        OnePerLine, // every line a quote
        WholeFile,  // the whole text one quote
    };

    Kind kind = Kind::WholeFile;
    QString line;             // the separator line (Kind::Line only)
    qsizetype quoteCount = 0; // quotes this choice makes of the analysed text

    // The quotes of a text with "\n" line ends, in file order. A quote keeps its inner
    // line breaks and white space; the line break before a separator line is not its.
    QStringList split(const QString& normalizedText) const;

    // As a script names it with --separator: "%", "blank", "line", "whole", or the line.
    static QBSeparatorChoice fromName(const QString& name);
    QString name() const;

    bool operator==(const QBSeparatorChoice& other) const
    {
        return kind == other.kind && line == other.line;
    }
};

// What a text is made of: the ways to cut it, most likely first, and whether the first
// one is clear enough to import without asking.
struct QBQuoteTextAnalysis
{
    // A text with "\n" line ends. "%" alone on a line makes it a fortune file, whatever
    // the share of such lines; else a repeated line without letters or digits, else
    // blank lines separate the quotes; lines repeated in a tenth of the text are offered
    // too. One quote per line and the whole text as one quote are always offered.
    static QBQuoteTextAnalysis analyze(const QString& normalizedText);
    // A text known to be a fortune file (its index says so): cut at |delimiter| lines
    // without asking, so a text without one is a single quote.
    static QBQuoteTextAnalysis analyzeFortuneFile(const QString& normalizedText, QChar delimiter);

    QList<QBSeparatorChoice> choices;
    bool clear = false;

    // Every choice gives the same single quote.
    bool isSingleQuote() const;
};

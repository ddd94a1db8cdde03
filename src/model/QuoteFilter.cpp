#include "model/QuoteFilter.h"

#include <algorithm>

QBQuoteFilter::QBQuoteFilter(const QString& filterText)
    : mWords(fold(filterText).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts))
{}

QString QBQuoteFilter::fold(const QString& text)
{
    const bool ascii =
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
    if (ascii)
        return text.toLower(); // the common case: no accents to strip
    QString folded;
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    folded.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing && c.category() != QChar::Mark_Enclosing)
            folded.append(c);
    }
    return folded.toCaseFolded();
}

bool QBQuoteFilter::matches(const QString& foldedText) const
{
    return std::all_of(mWords.cbegin(), mWords.cend(),
                       [&](const QString& word) { return foldedText.contains(word); });
}

bool QBQuoteFilter::isNarrowedBy(const QBQuoteFilter& narrower) const
{
    // Every word of ours must be contained in some word of the narrower filter.
    return std::all_of(mWords.cbegin(), mWords.cend(), [&](const QString& word) {
        return std::any_of(narrower.mWords.cbegin(), narrower.mWords.cend(),
                           [&](const QString& other) { return other.contains(word); });
    });
}

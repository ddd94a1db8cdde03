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
    folded = folded.toCaseFolded();
    // Letters that neither decompose nor fold to what people type on a plain keyboard.
    static const std::pair<char16_t, const char*> kSpelledOut[] = {{u'\u00DF', "ss"},
                                                                   {u'\u0153', "oe"},
                                                                   {u'\u00E6', "ae"},
                                                                   {u'\u00F8', "o"},
                                                                   {u'\u0142', "l"}};
    for (const auto& [letter, spelling] : kSpelledOut)
        folded.replace(QChar(letter), QLatin1String(spelling));
    return folded;
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

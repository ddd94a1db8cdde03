#pragma once

#include <QString>
#include <QStringList>

// Matches quotes against the words typed into the list's filter field: a quote matches
// when it contains every word, ignoring letter case and accents ("cafe" finds "Café").
class QBQuoteFilter
{
public:
    QBQuoteFilter() = default;
    explicit QBQuoteFilter(const QString& filterText);

    bool isEmpty() const { return mWords.isEmpty(); }
    // True when |narrower| can only match quotes that this filter matches too: each of
    // our words lies inside one of its words. Typing on narrows the list this way.
    bool isNarrowedBy(const QBQuoteFilter& narrower) const;
    // |foldedText| must come from fold().
    bool matches(const QString& foldedText) const;

    // Lower case without accents: decomposed, combining marks dropped, case folded.
    static QString fold(const QString& text);

private:
    QStringList mWords; // folded
};

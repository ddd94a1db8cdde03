#pragma once

#include "model/NotificationObserverTracker.h"
#include "model/QuoteValueObject.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <memory>
#include <vector>

// The ordered value objects of the whole collection, one per repository record, that
// the quotes list shows. It delivers QBQuoteDidUpdateNotification to the one object
// whose quote changed, so an edit costs one look-up however long the list is.
class QBQuotesSource : public QObject
{
    Q_OBJECT
public:
    using QuoteList = std::vector<std::shared_ptr<QBQuoteValueObject>>;

    explicit QBQuotesSource(QObject* parent = nullptr);

    const QuoteList& quotes() const { return mQuotes; }
    void setQuotes(QuoteList quotes);

    // Fresh value objects for every record, in repository order; one quotesChanged().
    void rebuildQuotesArray();
    // The first object standing for |quoteUID|, or null.
    std::shared_ptr<QBQuoteValueObject> valueObjectForQuoteUID(const QString& quoteUID) const;
    // Position of |object| in quotes(), or -1.
    qsizetype indexOfValueObject(const QBQuoteValueObject* object) const;
    // Counts the quote updates delivered, so a filtered list knows when to look again.
    quint64 contentGeneration() const { return mContentGeneration; }
    // Drops the objects at |sortedIndices| (ascending, no repeats) in one pass.
    void removeValueObjectsAt(const std::vector<qsizetype>& sortedIndices);

signals:
    // Around every replacement of the whole array.
    void quotesAboutToChange();
    void quotesChanged();

private:
    void indexByUID();
    void deliverQuoteDidUpdate(const QBNotification& notification);

    QuoteList mQuotes;
    QHash<QString, QBQuoteValueObject*> mFirstObjectByUID;
    QBNotificationObserverTracker mNotificationTracker;
    quint64 mContentGeneration = 0;
};

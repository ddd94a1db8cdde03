#pragma once

#include "model/NotificationObserverTracker.h"
#include "model/QuoteValueObject.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

class CQuoteRecord;

// The ordered quotes of the whole collection, one entry per repository record, that the
// quotes list shows. An entry's value object is made when it is first asked for: a list
// of 100,000 quotes shows a few dozen, and making them all would cost most of a launch.
// Until then the entry's text is read from its record. The source delivers
// QBQuoteDidUpdateNotification to the one object whose quote changed, so an edit costs
// one look-up however long the list is.
class QBQuotesSource : public QObject
{
    Q_OBJECT
public:
    explicit QBQuotesSource(QObject* parent = nullptr);

    qsizetype count() const { return qsizetype(mEntries.size()); }
    bool isEmpty() const { return mEntries.empty(); }
    // The value object of the quote at |index| (made now if needed), or null out of range.
    std::shared_ptr<QBQuoteValueObject> valueObjectAt(qsizetype index);
    // The object only if it has been made already.
    QBQuoteValueObject* existingValueObjectAt(qsizetype index) const;
    QString quoteUIDAt(qsizetype index) const;
    // The object's text where there is one, else the record's.
    QString contentAt(qsizetype index) const;
    // Counts the updates delivered for the quote at |index|, so cached derivatives of a
    // record's text know when to look again.
    quint32 contentRevisionAt(qsizetype index) const;

    // Fresh entries for every record, in repository order; one quotesChanged().
    void rebuildQuotesArray();
    // The object of the first quote with |quoteUID| (made now if needed), or null.
    std::shared_ptr<QBQuoteValueObject> valueObjectForQuoteUID(const QString& quoteUID);
    // Position of the first quote with |quoteUID|, or -1.
    qsizetype indexOfQuoteUID(const QString& quoteUID) const;
    // Positions of the first quotes with these identifiers, ascending, no repeats.
    std::vector<qsizetype> indicesOfQuoteUIDs(const QStringList& quoteUIDs) const;
    // Position of |object| in the list, or -1.
    qsizetype indexOfValueObject(const QBQuoteValueObject* object) const;
    // Counts the quote updates delivered, so a filtered list knows when to look again.
    quint64 contentGeneration() const { return mContentGeneration; }
    // Drops the quotes at |sortedIndices| (ascending, no repeats) in one pass.
    void removeQuotesAt(const std::vector<qsizetype>& sortedIndices);

signals:
    // Around every replacement of the whole array.
    void quotesAboutToChange();
    void quotesChanged();
    // The text of the quote at |index| was updated (an edit, its undo or redo).
    void quoteContentChanged(qsizetype index);

private:
    struct Entry
    {
        std::string uid;
        std::shared_ptr<QBQuoteValueObject> object;
        quint32 revision = 0;
    };

    // The record of the entry at |index|: normally at the same position in the
    // repository; searched for when changes not yet applied here moved it. Null when gone.
    const CQuoteRecord* recordAt(qsizetype index) const;
    qsizetype indexOfUID(const std::string& uid) const;
    void deliverQuoteDidUpdate(const QBNotification& notification);

    std::vector<Entry> mEntries;
    QBNotificationObserverTracker mNotificationTracker;
    quint64 mContentGeneration = 0;
};

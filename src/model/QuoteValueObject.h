#pragma once

#include "model/NotificationObserverTracker.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <memory>
#include <string>

class CQuoteRecord;

// The bindable view of one quote: its UID and a copy of its text. A user edit arrives
// as setContent(), which asks the model to commit it (QBQuoteShouldUpdateNotification)
// instead of writing the repository itself.
class QBQuoteValueObject : public QObject, public std::enable_shared_from_this<QBQuoteValueObject>
{
    Q_OBJECT
    Q_PROPERTY(QString content READ content WRITE setContent NOTIFY contentChanged)
    Q_PROPERTY(QString quoteUID READ quoteUID CONSTANT)

public:
    explicit QBQuoteValueObject(const QString& quoteUID, QObject* parent = nullptr);
    // Who delivers QBQuoteDidUpdateNotification to the object: its own registration, or
    // the quotes source that made it (one look-up per update instead of one call per
    // listed quote).
    enum class UpdateDelivery
    {
        OwnRegistration,
        ThroughSource
    };
    // For callers that already hold the record: saves looking it up again.
    explicit QBQuoteValueObject(const CQuoteRecord& record,
                                UpdateDelivery delivery = UpdateDelivery::OwnRegistration,
                                QObject* parent = nullptr);
    static std::shared_ptr<QBQuoteValueObject> quoteValueObjectWithQuote(const QString& quoteUID);

    // The record's description taken at creation; it goes stale after an edit.
    QString summaryContent() const;
    QString content() const { return mContent; }
    QString quoteUID() const { return mQuoteUID; }
    // Looked up anew on every call; null once the record is gone.
    CQuoteRecord* quoteRecord() const;
    QBNotificationObserverTracker& notificationTracker() { return mNotificationTracker; }

    // Stores a different text and posts QBQuoteShouldUpdateNotification; the same text
    // is ignored.
    void setContent(const QString& content);
    // Back to the record's present text (unchanged when the record is gone).
    void resetContent();
    void handleQuoteDidUpdate(const QVariantMap& userInfo);

signals:
    void contentChanged(const QString& content);

private:
    void takeContentFrom(const CQuoteRecord& record);
    void registerForNotifications();

    // The summary is written when asked for, from what the record was at creation: its
    // address and text (sharing the content's buffer until the content changes).
    const void* mRecordAddress = nullptr;
    QString mContentAtCreation;

    QString mContent;
    const QString mQuoteUID;
    QBNotificationObserverTracker mNotificationTracker;
};

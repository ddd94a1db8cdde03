#include "model/QuoteValueObject.h"

#include "core/QuotesRepository.h"
#include "model/Notifications.h"
#include "util/StringUtilities.h"

QBQuoteValueObject::QBQuoteValueObject(const QString& quoteUID, QObject* parent)
    : QObject(parent), mQuoteUID(quoteUID)
{
    if (const CQuoteRecord* record = quoteRecord())
        takeContentFrom(*record);
    registerForNotifications();
}

QBQuoteValueObject::QBQuoteValueObject(const CQuoteRecord& record, UpdateDelivery delivery,
                                       QObject* parent)
    : QObject(parent), mQuoteUID(QString::fromStdString(record.mUID))
{
    takeContentFrom(record);
    if (delivery == UpdateDelivery::OwnRegistration)
        registerForNotifications();
}

void QBQuoteValueObject::takeContentFrom(const CQuoteRecord& record)
{
    mContent = stringFromUnicodeCPPString(record.mContent);
    mRecordAddress = &record;
    mContentAtCreation = mContent;
}

std::shared_ptr<QBQuoteValueObject>
QBQuoteValueObject::quoteValueObjectWithQuote(const QString& quoteUID)
{
    return std::make_shared<QBQuoteValueObject>(quoteUID);
}

QString QBQuoteValueObject::summaryContent() const
{
    if (mRecordAddress == nullptr)
        return QString();
    return stringFromUnicodeCPPString(CQuoteRecord::describe(
        mRecordAddress, mQuoteUID.toStdString(), mContentAtCreation.toStdString()));
}

CQuoteRecord* QBQuoteValueObject::quoteRecord() const
{
    return CQuotesRepository::getInstance().findQuote(mQuoteUID.toStdString());
}

void QBQuoteValueObject::registerForNotifications()
{
    mNotificationTracker.observeNotification(QBQuoteDidUpdateNotification,
                                             [this](const QBNotification& notification) {
                                                 handleQuoteDidUpdate(notification.userInfo);
                                             });
}

void QBQuoteValueObject::setContent(const QString& content)
{
    if (content == mContent)
        return;
    mContent = content;
    emit contentChanged(mContent);
    QBNotificationCenter::defaultCenter().post(
        QBQuoteShouldUpdateNotification, this,
        {{QBKeyQuoteUID, mQuoteUID}, {QBKeyStringContent, mContent}});
}

void QBQuoteValueObject::resetContent()
{
    if (const CQuoteRecord* record = quoteRecord())
        setContent(stringFromUnicodeCPPString(record->mContent));
}

void QBQuoteValueObject::handleQuoteDidUpdate(const QVariantMap& userInfo)
{
    if (userInfo.value(QBKeyQuoteUID).toString() != mQuoteUID)
        return;
    resetContent();
}

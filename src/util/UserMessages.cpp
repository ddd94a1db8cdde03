#include "util/UserMessages.h"

QBUserMessages& QBUserMessages::shared()
{
    static QBUserMessages instance;
    return instance;
}

void QBUserMessages::show(const QBUserMessage& message)
{
    mLast = message;
    emit messageShown(message);
}

void QBUserMessages::dismiss(const QString& topic)
{
    emit messageDismissed(topic);
}

#include "model/QuotesChangeBatch.h"

#include "logging/ULog.h"
#include "model/Notifications.h"
#include "util/NotificationCenter.h"

namespace {
int openBatches = 0;
}

void QBQuotesChangeBatch::begin()
{
    ++openBatches;
}

void QBQuotesChangeBatch::end()
{
    if (openBatches == 0) {
        logWarningMessage("A batch of quote changes was ended but never begun");
        return;
    }
    if (--openBatches == 0)
        QBNotificationCenter::defaultCenter().post(QBQuotesChangeBatchDidEndNotification);
}

bool QBQuotesChangeBatch::isOpen()
{
    return openBatches > 0;
}

#include "TelemetryClock.h"

#include <QTimeZone>

QDateTime TelemetryClock::distantPast()
{
    return QDateTime(QDate(1, 1, 1), QTime(0, 0), QTimeZone::utc());
}

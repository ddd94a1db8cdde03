#pragma once

#include <QDateTime>
#include <QString>

// When the running helper changes the signature next. The helper records it after every
// change and every new interval, so the application can show it without guessing from
// file times (its own writes do not move the helper's timer).
class QBHelperSchedule
{
public:
    // <container>/Library/Application Support/quillbox2-helper-next; empty without a
    // container.
    static QString filePath();
    // Replaces the file with |nextChange| (UTC, milliseconds); false when it cannot.
    static bool recordNextChange(const QDateTime& nextChange);
    // The recorded time, or an invalid one when there is none or the file is damaged.
    static QDateTime readNextChange();
};

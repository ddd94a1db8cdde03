#pragma once

#include <QString>

// Names of the notifications that tie the quote model to its views and to the
// auto-saver, and the keys of their user info. Each text equals its constant's name.

inline const QString QBQuoteSelectedNotification = QStringLiteral("QBQuoteSelectedNotification");
inline const QString QBSwitchToSettingsNotification =
    QStringLiteral("QBSwitchToSettingsNotification");
inline const QString QBQuoteShouldUpdateNotification =
    QStringLiteral("QBQuoteShouldUpdateNotification");
inline const QString QBQuoteDidUpdateNotification = QStringLiteral("QBQuoteDidUpdateNotification");
inline const QString QBQuoteAddedNotification = QStringLiteral("QBQuoteAddedNotification");
inline const QString QBQuotesImportedNotification = QStringLiteral("QBQuotesImportedNotification");
inline const QString QBQuoteRemovedNotification = QStringLiteral("QBQuoteRemovedNotification");
inline const QString QBQuoteWillRemoveNotification =
    QStringLiteral("QBQuoteWillRemoveNotification");
inline const QString QBCheckForDuplicateQuotesNotification =
    QStringLiteral("QBCheckForDuplicateQuotesNotification");
inline const QString QBQuotesModifiedNotification = QStringLiteral("QBQuotesModifiedNotification");
inline const QString QBQuoteDoubleClickedNotification =
    QStringLiteral("QBQuoteDoubleClickedNotification");
inline const QString QBWriteCurrentQuoteNotification =
    QStringLiteral("QBWriteCurrentQuoteNotification");
// Posted when the outermost batch of changes ends (see QBQuotesChangeBatch).
inline const QString QBQuotesChangeBatchDidEndNotification =
    QStringLiteral("QBQuotesChangeBatchDidEndNotification");

// String: the UID of the quote concerned.
inline const QString QBKeyQuoteUID = QStringLiteral("QBKeyQuoteUID");
// Number (32-bit signed): how many quotes an import added.
inline const QString QBKeyImportedQuotesCount = QStringLiteral("QBKeyImportedQuotesCount");
// String: the new text of a quote.
inline const QString QBKeyStringContent = QStringLiteral("QBKeyStringContent");

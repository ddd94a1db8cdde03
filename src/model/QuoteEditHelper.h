#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

class QBUndoManager;

// Asks the user a yes/no question and runs one of the two handlers with the answer.
// The model cannot show dialogs itself; the application installs one (QBAlert's).
using QBYesNoQuestion =
    std::function<void(const QString& title, const QString& message, int style,
                       std::function<void()> onYes, std::function<void()> onNo)>;

// The one place where the quote collection is changed on the user's behalf. Every
// change registers its undo step, changes the repository, then posts its notification
// (sender: notificationSender()), in that order.
class QBQuoteEditHelper
{
public:
    QBQuoteEditHelper() = delete;

    // Stands for this class as the sender of its notifications.
    static QObject* notificationSender();

    static void setYesNoQuestion(QBYesNoQuestion question);

    static void updateQuote(const QString& uid, const QString& content, QBUndoManager* undoManager);
    static void addQuoteWithUndoManager(QBUndoManager* undoManager);
    // An import: not undoable; blank strings are skipped.
    static void addQuotesFromStringArray(const QStringList& strings);
    static QString preprocessQuote(const QString& text);

    // True when two records with different UIDs hold byte-equal texts.
    static bool hasDuplicateQuotes();
    // UIDs to remove so that only the first record of each equal-text group stays, in
    // repository order.
    static std::vector<std::string> duplicateQuoteUIDs();
    static void checkForDuplicateQuotesWithUndoManager(QBUndoManager* undoManager);
    static void removeDuplicateQuotesWithUndoManager(QBUndoManager* undoManager);

    static void removeQuote(const QString& uid, QBUndoManager* undoManager, bool notify);
    // removeQuote() with notify set for each of |uids| in order, in one pass over the
    // collection; the notifications of all removals come before all removed ones.
    static void removeQuotes(const std::vector<std::string>& uids, QBUndoManager* undoManager);
    static void removeAllQuotesWithUndoManager(QBUndoManager* undoManager);
};

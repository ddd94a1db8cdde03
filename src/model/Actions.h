#pragma once

#include "core/QuoteRecord.h"
#include "util/UndoManager.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

// One undoable change to the quote collection. An action captures what it needs to
// reverse the change; when the undo manager runs it, it first registers its own
// inverse (which the manager files on the opposite stack), then changes the repository
// and posts the matching notification with itself as sender.
class QBAction : public QObject, public std::enable_shared_from_this<QBAction>
{
    Q_OBJECT
public:
    QBAction(QBUndoManager* undoManager, const QString& actionName);

    // Files performUndo() on the undo manager, which keeps this action alive until the
    // step is discarded. Does nothing without an undo manager.
    void registerUndo();
    virtual void performUndo();
    // "<QBEditQuoteAction(01:02:03): 0x...>"
    QString description() const;

    QBUndoManager* undoManager() const { return mUndoManager; }
    QString actionName() const { return mActionName; }
    QDateTime creationTime() const { return mCreationTime; }

private:
    QPointer<QBUndoManager> mUndoManager;
    QString mActionName;
    QDateTime mCreationTime;
};

class QBAddQuoteAction : public QBAction
{
    Q_OBJECT
public:
    QBAddQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote);
    void performUndo() override;
    const CQuoteRecord& quoteRecord() const { return mQuoteRecord; }

private:
    CQuoteRecord mQuoteRecord;
};

class QBRemoveQuoteAction : public QBAction
{
    Q_OBJECT
public:
    // Remembers the record's present index (the record count when it is not stored).
    QBRemoveQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote);
    // For callers that have just looked the index up.
    QBRemoveQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote, std::uint32_t index);
    void performUndo() override;
    const CQuoteRecord& quoteRecord() const { return mQuoteRecord; }
    std::uint32_t originalQuoteIndex() const { return mOriginalQuoteIndex; }

private:
    CQuoteRecord mQuoteRecord;
    std::uint32_t mOriginalQuoteIndex;
};

// Refers to the live record by its UID, looked up when the step runs, and keeps the
// text it had when the action was made.
class QBEditQuoteAction : public QBAction
{
    Q_OBJECT
public:
    QBEditQuoteAction(QBUndoManager* undoManager, const CQuoteRecord& quote);
    void performUndo() override;
    const std::string& quoteUID() const { return mQuoteUID; }
    QString originalContent() const { return mOriginalContent; }

private:
    std::string mQuoteUID;
    QString mOriginalContent;
};

class QBAddAllQuotesAction : public QBAction
{
    Q_OBJECT
public:
    QBAddAllQuotesAction(QBUndoManager* undoManager, std::vector<CQuoteRecord> quotes);
    void performUndo() override;
    const std::vector<CQuoteRecord>& quotes() const { return mQuotes; }

private:
    std::vector<CQuoteRecord> mQuotes;
};

class QBRemoveAllQuotesAction : public QBAction
{
    Q_OBJECT
public:
    QBRemoveAllQuotesAction(QBUndoManager* undoManager, std::vector<CQuoteRecord> quotes);
    void performUndo() override;
    const std::vector<CQuoteRecord>& quotes() const { return mQuotes; }

private:
    std::vector<CQuoteRecord> mQuotes;
};

#pragma once

// Marks a run of changes that the user sees as one command (removing duplicates, undo
// or redo of a group). While any batch is open the auto-saver only notes that the
// collection changed; when the outermost batch ends, QBQuotesChangeBatchDidEndNotification
// is posted and the auto-saver writes the file once, before the command returns.
class QBQuotesChangeBatch
{
public:
    // Opens a batch for the lifetime of the object.
    QBQuotesChangeBatch() { begin(); }
    ~QBQuotesChangeBatch() { end(); }
    QBQuotesChangeBatch(const QBQuotesChangeBatch&) = delete;
    QBQuotesChangeBatch& operator=(const QBQuotesChangeBatch&) = delete;

    static void begin();
    static void end();
    static bool isOpen();
};

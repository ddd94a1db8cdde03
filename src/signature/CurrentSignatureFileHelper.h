#pragma once

#include "logging/Log.h"
#include "signature/SignatureComposer.h"

#include <QString>
#include <QUrl>

#include <functional>
#include <utility>
#include <vector>

// Owns the current signature file, the plain-text file a mail client reads as its
// signature: asks the user where it goes, keeps a bookmark to it in the shared suite
// (relative to the quotes database, so the helper process resolves it too) and writes
// a quote's text into it. Class operations only; used from the main thread.
class QBCurrentSignatureFileHelper
{
public:
    // Shows a window-modal save dialog on the main window, offering
    // "CurrentSignature.txt"; calls |handler| once with the chosen file's URL, and never
    // on cancel. Does nothing without a main window. Lives in the widgets library
    // (quillbox2_signature_widgets), so processes without windows cannot call it.
    static void askPathToOutputSignatureFile(const std::function<void(const QUrl&)>& handler);

    // Stores a bookmark to |url| in the suite, replacing any earlier one; on failure
    // logs a warning and keeps the earlier one.
    static void createSecurityScopedBookmarkForPath(const QUrl& url);

    // Writes |content| as UTF-8 (no byte-order mark, one "\n" added to a non-empty text
    // without a final line break) over the bookmarked file, replacing it atomically, and
    // records the new file's identity in the bookmark. False, with warnings logged, when
    // the bookmark is missing, broken or stale, or the write fails; the bookmark is then
    // left as it was, and the problem goes to the user's messages (topic
    // kUserMessageTopic), which a later good write takes back.
    static bool writeToCurrentSignatureFileContent(const QString& content);
    static const QString kUserMessageTopic;

    // Composes |quote| by the signature settings in |defaults| (QBSignatureComposer) and
    // writes the result as above; |composed| receives what was composed.
    // |result|, when given, receives the write's outcome (its reason for the user).
    struct WriteResult;
    static bool writeQuoteAsSignature(const QString& quote, const QBUserDefaults& defaults,
                                      QBComposedSignature* composed = nullptr,
                                      WriteResult* result = nullptr);

    // The same write, with the lines it would log handed back instead, for a caller that
    // retries on a timer and logs a repeated failure only once.
    struct WriteResult
    {
        bool written = false;
        std::vector<std::pair<qblog::Level, QString>> messages;
        // Why it failed, in words for the user.
        QString reason;
    };
    static WriteResult writeSignature(const QString& content);
    // Whether the suite holds a bookmark to write through (read from the file afresh).
    static bool hasStoredBookmark();
    // The write's result without a stored bookmark.
    static WriteResult noBookmark();
    // The same with the file's bytes already composed (QBSignatureComposer).
    static WriteResult writeSignatureBytes(const QByteArray& bytes);
    // Logs |messages| in order at their levels.
    static void logMessages(const std::vector<std::pair<qblog::Level, QString>>& messages);

    // The bytes written for |content| alone, without template or fit rules: UTF-8 with
    // one final line break added to a non-empty text that lacks one.
    static QByteArray signatureBytes(const QString& content);

    // Whether the path lies in the cloud-drive folder (case-sensitive test).
    static bool isPathOnICloudDrive(const QUrl& url);

private:
    // The quotes database path, the base of every bookmark; stops the process if none.
    static QString bookmarkBasePath();
    static WriteResult writeFailure(const QString& error, const QString& reason);
    static WriteResult staleBookmark();
};

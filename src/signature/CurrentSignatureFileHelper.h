#pragma once

#include <QString>
#include <QUrl>

#include <functional>

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

    // Writes exactly |content| as UTF-8 (no byte-order mark) over the bookmarked file,
    // in place. False, with warnings logged, when the bookmark is missing, broken or
    // stale, or the write fails; the bookmark itself is never changed here.
    static bool writeToCurrentSignatureFileContent(const QString& content);

    // Whether the path lies in the cloud-drive folder (case-sensitive test).
    static bool isPathOnICloudDrive(const QUrl& url);

private:
    // The quotes database path, the base of every bookmark; stops the process if none.
    static QString bookmarkBasePath();
    static void logWriteFailure(const QString& error);
};

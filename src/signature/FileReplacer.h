#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

// Replaces the whole content of an existing regular file so that a reader sees the old
// content or the new one, never an empty or partial file: the new bytes go into a
// temporary file ".NAME.XXXXXX" in the same folder, which is then renamed over the
// target. A folder that cannot take a temporary file is a failure, never a rewrite in
// place. Temporary files that killed writes left behind are removed first.
//
// The target is opened without blocking and without following a final symbolic link,
// and the identity of what was opened (not of the path) is checked, so a FIFO or link
// swapped in after the caller resolved the path is neither waited on nor written.
class QBFileReplacer
{
public:
    struct Result
    {
        enum class Status
        {
            Written,
            NotTheExpectedFile, // a regular file, but not the one the caller expected
            Failed
        };
        Status status = Status::Failed;
        // Identity of the file now at the path (a new one after a rename).
        quint64 device = 0;
        quint64 inode = 0;
        QString error; // the system's reason, when Failed
    };
    using IdentityCheck = std::function<bool(quint64 device, quint64 inode)>;

    // |beforeReplacing|, when given, learns the new file's identity once its bytes are on
    // disk and before it takes the target's place; false cancels the write.
    static Result replaceContent(const QString& path, const QByteArray& bytes,
                                 const IdentityCheck& isExpectedFile,
                                 const IdentityCheck& beforeReplacing = {});
};

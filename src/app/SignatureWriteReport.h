#pragma once

#include <QString>

// Writes a quote into the signature file for a command of the window and tells the user
// how it went: "Signature updated", or why it failed with "Choose Another File…".
class QBSignatureWriteReport
{
public:
    QBSignatureWriteReport() = delete;

    // Topic of its messages: a new outcome replaces the last.
    static const QString kTopic;

    // The writer's log lines are logged as the writer would. True when written.
    static bool write(const QString& content, bool announceSuccess = true);
};

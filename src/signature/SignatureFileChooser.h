#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

class QBUserDefaults;

// Choosing the signature file, wherever the user starts it (the settings page, the
// first-run hint, Use as Signature with no file yet, a failed write): the save dialog,
// then, for an existing file that Quillbox2 did not write, a question before it is
// replaced; then the file is taken.
class QBSignatureFileChooser
{
public:
    QBSignatureFileChooser() = delete;

    // Topic of the first-run hint, taken back once a file is chosen.
    static const QString kHintTopic;

    // The save dialog and the replace question; |use| gets the file, never on cancel.
    static void chooseFile(std::function<void(const QUrl&)> use);
    // chooseFile(), then useFile() on the application's defaults.
    static void chooseAndUseFile();

    // Takes |url| as the signature file unless it is unusable: stores its path in
    // |defaults|, makes the bookmark and asks the quotes window (as |sender|) to write
    // the current quote into it. False when refused.
    static bool useFile(const QUrl& url, QBUserDefaults& defaults, QObject* sender);

    // Whether the file at |path| is empty, is the signature file as Quillbox2 last wrote
    // it, or holds a quote of the collection as Quillbox2 writes one.
    static bool isOwnSignatureFile(const QString& path);
};

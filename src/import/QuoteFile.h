#pragma once

#include "import/QuoteTextAnalysis.h"
#include "import/TextFileReader.h"

#include <QString>
#include <QStringList>

// One file to import, read and looked at: either a collection the app exported (its
// quotes as they are) or a text to cut into quotes (its analysis says how).
struct QBQuoteFile
{
    enum class Status
    {
        Ok,
        NotText,  // unreadable, undecodable or binary
        TooLarge, // over the reader's limit
        Empty,    // no characters at all
    };

    static QBQuoteFile load(const QString& path);
    // As load() would see a file of |bytes| (with no fortune index beside it).
    static QBQuoteFile fromBytes(const QByteArray& bytes);

    QString path;
    Status status = Status::NotText;
    QString error;    // why, when not Ok
    QString encoding; // as the reader found it
    QString text;     // with "\n" line ends
    // A fortune file whose index lies beside it: cut at the index's delimiter, and
    // decoded when the index says ROT13.
    bool fortuneIndexed = false;
    bool rotated = false;

    bool isCollection = false;
    QStringList collectionQuotes; // when isCollection
    QBQuoteTextAnalysis analysis; // otherwise

    bool ok() const { return status == Status::Ok; }

    // The quotes with |choice| (a collection ignores it).
    QStringList quotes(const QBSeparatorChoice& choice) const;
    // The quotes an import takes without asking: the most likely choice's.
    QStringList likelyQuotes() const;

private:
    static QBQuoteFile decoded(const QString& path, QBTextFileReader::Result read);
};

#pragma once

#include "import/QuoteTextAnalysis.h"

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
};

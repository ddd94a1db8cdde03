#pragma once

#include "model/NotificationObserverTracker.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <string>
#include <unordered_map>

// Tells which quote of the collection the signature file holds. Every quote's text is
// hashed once (so that the file written for it has the same hash); model notifications
// keep the hashes current, so recognising a file costs one hash and one look-up however
// large the collection is. A match is confirmed with exactly what the writer would write.
class QBSignatureQuoteIndex
{
public:
    QBSignatureQuoteIndex();
    ~QBSignatureQuoteIndex();
    QBSignatureQuoteIndex(const QBSignatureQuoteIndex&) = delete;
    QBSignatureQuoteIndex& operator=(const QBSignatureQuoteIndex&) = delete;

    // The UID of a quote whose signature file would hold exactly |fileBytes|, or an
    // empty text when no quote would (a file written by hand, an edited quote).
    QString quoteUIDForFileBytes(const QByteArray& fileBytes);

    // What the signature file holds for a quote with |content|. The one place that says
    // how a quote appears in the file; anything that changes the writer changes this (and
    // the hash in the .cpp, which must give a quote and its file the same value).
    static QByteArray fileBytesForQuote(const std::string& content);

private:
    void ensureBuilt();
    void forget(const std::string& uid);
    void learn(const std::string& uid);
    void quoteChanged(const QString& uid, bool removed);

    bool mBuilt = false;
    std::unordered_multimap<std::uint64_t, std::string> mUIDsByHash;
    std::unordered_map<std::string, std::uint64_t> mHashByUID;
    QBNotificationObserverTracker mNotificationTracker;
};

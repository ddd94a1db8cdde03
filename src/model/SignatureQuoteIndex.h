#pragma once

#include "model/NotificationObserverTracker.h"
#include "signature/SignatureComposer.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <string>
#include <unordered_map>

// Tells which quote of the collection the signature file holds. Every quote's signature,
// composed by the current settings, is hashed once; model notifications keep the hashes
// current and new settings index afresh, so recognising a file costs one hash and one
// look-up however large the collection is. A match is confirmed byte for byte.
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

    // The template, wrap and line limit the file is composed by; different settings make
    // the next look-up index the collection again.
    void setSettings(const QBSignatureSettings& settings);

    // What the signature file holds for a quote with |content| under the settings.
    QByteArray fileBytesForQuote(const std::string& content) const;

private:
    void ensureBuilt();
    void forget(const std::string& uid);
    void learn(const std::string& uid);
    void quoteChanged(const QString& uid, bool removed);

    bool mBuilt = false;
    QBSignatureSettings mSettings;
    std::unordered_multimap<std::uint64_t, std::string> mUIDsByHash;
    std::unordered_map<std::string, std::uint64_t> mHashByUID;
    QBNotificationObserverTracker mNotificationTracker;
};

#pragma once

#include "core/FileIdentity.h"
#include "helper/QuoteCycle.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// A round's order of the quotes of one quotes.db, kept in a file beside the cycle's
// state, so that --print, which runs for every mail, finds the next quote by a binary
// search in a mapped file instead of reading the whole collection: the order is made
// again only when the database file or the round changes. The entries point into the
// database's bytes, so an order is used only with the very file it was made from
// (device, inode, size and modification time).
class QBQuoteOrderFile
{
public:
    using Identity = QBFileIdentity;
    // The identity of the open file |descriptor|, or nothing.
    static bool identityOf(int descriptor, Identity& identity);

    // The order kept at |path| for the database |identity| whose bytes are |document|.
    QBQuoteOrderFile(const QString& path, const Identity& identity, std::string_view document);

    // Whether an order of this database is kept (whatever its key).
    bool isKept() const { return mEntries != nullptr; }
    // The key of the kept order; its order, and the quote content of its positions.
    std::uint64_t key() const { return mKey; }
    const QBQuoteCycle::Order& order() const { return *mOrder; }
    std::string_view contentAt(std::size_t position) const;

    // Keeps |order| (made for |key| from |uids| and |contents|, views into the document)
    // in place of the file's order. False when it cannot be written (logged by nobody:
    // the next --print then simply reads the collection again).
    bool keep(std::uint64_t key, const QBQuoteCycle::Order& order,
              const std::vector<std::string_view>& uids,
              const std::vector<std::string_view>& contents) const;

private:
    struct Entry;
    class MappedOrder;
    std::string_view slice(std::uint32_t offset, std::uint32_t length) const;

    QString mPath;
    Identity mIdentity;
    std::string_view mDocument;
    QFile mFile;
    const Entry* mEntries = nullptr;
    std::size_t mCount = 0;
    std::uint64_t mKey = 0;
    std::unique_ptr<QBQuoteCycle::Order> mOrder;
};

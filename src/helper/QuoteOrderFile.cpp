#include "helper/QuoteOrderFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kMagic[8] = {'Q', 'B', '2', 'O', 'R', 'D', 'R', '1'};

struct Header
{
    char magic[8];
    std::uint64_t device;
    std::uint64_t inode;
    std::uint64_t size;
    std::int64_t modifiedSeconds;
    std::int64_t modifiedNanoseconds;
    std::uint64_t key;
    std::uint64_t count;
};

bool writeAll(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

// Collects small records and writes them in blocks; the first failed write ends it.
class ChunkedWriter
{
public:
    explicit ChunkedWriter(int descriptor) : mDescriptor(descriptor) {}
    void append(const void* bytes, std::size_t size)
    {
        if (mUsed + size > sizeof mBuffer) {
            flush();
        }
        std::memcpy(mBuffer + mUsed, bytes, size);
        mUsed += size;
    }
    bool finish()
    {
        flush();
        return mGood;
    }

private:
    void flush()
    {
        mGood = mGood && writeAll(mDescriptor, mBuffer, mUsed);
        mUsed = 0;
    }

    int mDescriptor;
    char mBuffer[64 * 1024];
    std::size_t mUsed = 0;
    bool mGood = true;
};

} // namespace

struct QBQuoteOrderFile::Entry
{
    std::uint64_t hash;
    std::uint32_t uidOffset;
    std::uint32_t uidLength;
    std::uint32_t contentOffset;
    std::uint32_t contentLength;
};

// The kept order, read where it lies in the mapped file.
class QBQuoteOrderFile::MappedOrder : public QBQuoteCycle::Order
{
public:
    explicit MappedOrder(const QBQuoteOrderFile& file) : mFile(file) {}
    std::size_t size() const override { return mFile.mCount; }
    std::uint64_t hashAt(std::size_t position) const override
    {
        return mFile.mEntries[position].hash;
    }
    std::string_view uidAt(std::size_t position) const override
    {
        const Entry& entry = mFile.mEntries[position];
        return mFile.slice(entry.uidOffset, entry.uidLength);
    }
    std::size_t indexAt(std::size_t position) const override { return position; }

private:
    const QBQuoteOrderFile& mFile;
};

bool QBQuoteOrderFile::identityOf(int descriptor, Identity& identity)
{
    struct stat status
    {
    };
    if (::fstat(descriptor, &status) != 0) {
        return false;
    }
    identity = QBFileIdentity::of(status);
    return true;
}

QBQuoteOrderFile::QBQuoteOrderFile(const QString& path, const Identity& identity,
                                   std::string_view document)
    : mPath(path), mIdentity(identity), mDocument(document), mFile(path)
{
    if (!mFile.open(QIODevice::ReadOnly) || mFile.size() < qint64(sizeof(Header))) {
        return;
    }
    const uchar* bytes = mFile.map(0, mFile.size(), QFileDevice::MapPrivateOption);
    if (bytes == nullptr) {
        return;
    }
    Header header{};
    std::memcpy(&header, bytes, sizeof header);
    const Identity kept{header.device, header.inode, static_cast<std::int64_t>(header.size),
                        header.modifiedSeconds, header.modifiedNanoseconds};
    if (std::memcmp(header.magic, kMagic, sizeof kMagic) != 0 || !(kept == identity) ||
        header.count != (std::uint64_t(mFile.size()) - sizeof header) / sizeof(Entry) ||
        (std::uint64_t(mFile.size()) - sizeof header) % sizeof(Entry) != 0) {
        return;
    }
    // The mapping starts on a page, so the entries after the 64-byte header are aligned.
    mEntries = reinterpret_cast<const Entry*>(bytes + sizeof header);
    mCount = header.count;
    mKey = header.key;
    mOrder = std::make_unique<MappedOrder>(*this);
}

std::string_view QBQuoteOrderFile::slice(std::uint32_t offset, std::uint32_t length) const
{
    // A damaged order file must not make a read beyond the document.
    if (offset > mDocument.size() || length > mDocument.size() - offset) {
        return std::string_view();
    }
    return mDocument.substr(offset, length);
}

std::string_view QBQuoteOrderFile::contentAt(std::size_t position) const
{
    const Entry& entry = mEntries[position];
    return slice(entry.contentOffset, entry.contentLength);
}

bool QBQuoteOrderFile::keep(std::uint64_t key, const QBQuoteCycle::Order& order,
                            const std::vector<std::string_view>& uids,
                            const std::vector<std::string_view>& contents) const
{
    if (mDocument.size() > UINT32_MAX) {
        return false;
    }
    const auto offsetOf = [this](std::string_view part) {
        return static_cast<std::uint32_t>(part.data() - mDocument.data());
    };
    const Header header{{},
                        mIdentity.device,
                        mIdentity.inode,
                        static_cast<std::uint64_t>(mIdentity.size),
                        mIdentity.modifiedSeconds,
                        mIdentity.modifiedNanoseconds,
                        key,
                        order.size()};
    // Replaced through a rename, so a reader maps either the old order or the new one.
    QByteArray temporaryPath = QFile::encodeName(mPath) + ".XXXXXX";
    const int descriptor = ::mkostemp(temporaryPath.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    // Written through a small buffer: a buffer of the whole order (megabytes at 100,000
    // quotes) cost more in zeroing and page faults than the write itself.
    ChunkedWriter writer(descriptor);
    char headerBytes[sizeof header];
    std::memcpy(headerBytes, &header, sizeof header);
    std::memcpy(headerBytes, kMagic, sizeof kMagic);
    writer.append(headerBytes, sizeof headerBytes);
    for (std::size_t position = 0; position < order.size(); ++position) {
        const std::size_t index = order.indexAt(position);
        const Entry entry{order.hashAt(position), offsetOf(uids[index]),
                          static_cast<std::uint32_t>(uids[index].size()), offsetOf(contents[index]),
                          static_cast<std::uint32_t>(contents[index].size())};
        writer.append(&entry, sizeof entry);
    }
    bool kept = writer.finish();
    kept = ::close(descriptor) == 0 && kept;
    kept = kept && ::rename(temporaryPath.constData(), QFile::encodeName(mPath).constData()) == 0;
    if (!kept) {
        ::unlink(temporaryPath.constData());
    }
    return kept;
}

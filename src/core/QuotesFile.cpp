// The quotes database file: the document of QuotesDocument.h, saved crash-safely.
#include "core/AtomicFileWriter.h"
#include "core/PlainQuotesReader.h"
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"
#include "logging/Log.h"

std::optional<QBFileIdentity>
writeQuotesFile(const std::string& path, const std::vector<CQuoteRecord>& records,
                const std::function<void(const std::string&)>& beforeReplacing)
{
    if (path.empty()) {
        logWarningMessage("No file path for quotes specified - Cannot save quotes.");
        return std::nullopt;
    }
    return replaceFileAtomically(
        path, [&records](std::ostream& stream) { writeQuotesDocument(stream, records); },
        beforeReplacing);
}

QBFileIdentity readQuotesFile(const std::string& path, std::vector<CQuoteRecord>& records)
{
    QBRegularFileForReading file(path);
    const QBByteSource source = [&file](char* buffer, std::size_t capacity) {
        return file.read(buffer, capacity);
    };
    if (!readPlainQuotesDocument(source, std::size_t(file.identity().size), records)) {
        file.rewind();
        readQuotesDocumentWithBoost(file.readAll(), path, records);
    }
    return file.identity();
}

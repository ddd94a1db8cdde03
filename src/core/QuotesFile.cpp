// The quotes database file: the document of QuotesDocument.h, saved crash-safely.
#include "core/AtomicFileWriter.h"
#include "core/QuotesDocument.h"
#include "core/QuotesRepository.h"
#include "logging/Log.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace {

std::string readWholeFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::system_error(errno, std::generic_category(), "cannot open " + path);
    }
    std::string bytes;
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    file.seekg(0, std::ios::beg);
    if (size > 0) {
        bytes.resize(static_cast<std::size_t>(size));
        file.read(bytes.data(), size);
        bytes.resize(static_cast<std::size_t>(file.gcount()));
    }
    if (file.bad()) {
        throw std::system_error(EIO, std::generic_category(), "cannot read " + path);
    }
    return bytes;
}

} // namespace

void writeQuotesFile(const std::string& path, const std::vector<CQuoteRecord>& records)
{
    if (path.empty()) {
        logWarningMessage("No file path for quotes specified - Cannot save quotes.");
        return;
    }
    replaceFileAtomically(
        path, [&records](std::ostream& stream) { writeQuotesDocument(stream, records); });
}

void readQuotesFile(const std::string& path, std::vector<CQuoteRecord>& records)
{
    readQuotesDocument(readWholeFile(path), path, records);
}

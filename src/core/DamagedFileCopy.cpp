#include "core/DamagedFileCopy.h"

#include <boost/filesystem/operations.hpp>

#include <ctime>

namespace fs = boost::filesystem;

namespace {

constexpr int kMaxNameAttempts = 100;

std::string currentLocalTimeStamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}

} // namespace

std::optional<std::string> keepCopyOfDamagedFile(const std::string& path)
{
    boost::system::error_code statusError;
    if (path.empty() || !fs::is_regular_file(fs::status(path, statusError))) {
        return std::nullopt;
    }
    const std::string baseName = path + ".damaged-" + currentLocalTimeStamp();
    for (int attempt = 1;; ++attempt) {
        const std::string copyPath =
            attempt == 1 ? baseName : baseName + "-" + std::to_string(attempt);
        boost::system::error_code error;
        // Without overwrite options the copy refuses to replace an earlier one.
        fs::copy_file(path, copyPath, fs::copy_options::none, error);
        if (!error) {
            return copyPath;
        }
        if (error != boost::system::errc::file_exists || attempt == kMaxNameAttempts) {
            throw fs::filesystem_error("cannot keep a copy of the damaged file", path, copyPath,
                                       error);
        }
    }
}

#include "core/FolderHelper.h"

#include "core/Bundle.h"
#include "core/XdgDirectories.h"
#include "logging/Log.h"

#include <boost/filesystem/operations.hpp>

#include <cstdio>

namespace fs = boost::filesystem;

namespace {
// The logs folder is asked for before logging is set up, so failures also go to stderr.
void printAndLogWarning(const std::string& message)
{
    std::fprintf(stderr, "%s\n", message.c_str());
    logWarningMessage(message);
}

// Like asking the platform for a user folder with "create" on: the folder is made
// when missing. Gives the error's description on failure.
std::optional<fs::path> createdBaseDirectory(QBXdgBase base, std::string& error)
{
    QBXdgLookup lookup = xdgBaseDirectory(base);
    if (!lookup.path) {
        error = lookup.error;
        return std::nullopt;
    }
    boost::system::error_code code;
    if (!fs::is_directory(*lookup.path, code)) {
        fs::create_directories(*lookup.path, code);
        if (code) {
            error = "Cannot create folder '" + lookup.path->string() + "': " + code.message();
            return std::nullopt;
        }
    }
    return lookup.path;
}
} // namespace

std::optional<std::string> QBFolderHelper::getPathToLogsFolder()
{
    std::string error;
    const std::optional<fs::path> library = createdBaseDirectory(QBXdgBase::State, error);
    if (!library) {
        printAndLogWarning("Failed to locate library directory for current user: " + error);
        return std::nullopt;
    }
    return (*library / "Logs").string();
}

std::optional<std::string> QBFolderHelper::getCreatePathToAppSupportFolder()
{
    std::string error;
    const std::optional<fs::path> appSupport = createdBaseDirectory(QBXdgBase::Data, error);
    if (!appSupport) {
        printAndLogWarning("Failed to locate or create app support directory: " + error);
        return std::nullopt;
    }
    const fs::path folder = *appSupport / QBBundle::bundleName();
    boost::system::error_code code;
    if (!fs::exists(folder, code)) {
        fs::create_directories(folder, code);
        if (code) {
            printAndLogWarning("Failed to locate or create app support directory: Cannot create "
                               "folder '" +
                               folder.string() + "': " + code.message());
            return std::nullopt;
        }
    }
    return folder.string();
}

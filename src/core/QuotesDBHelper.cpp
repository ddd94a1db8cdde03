#include "core/QuotesDBHelper.h"

#include "core/AppIdentity.h"
#include "core/Bundle.h"
#include "core/XdgDirectories.h"
#include "logging/Log.h"

#include <boost/filesystem/operations.hpp>

namespace fs = boost::filesystem;

std::optional<std::string> QBQuotesDBHelper::getApplicationGroupContainer()
{
    const QBXdgLookup dataHome = xdgBaseDirectory(QBXdgBase::Data);
    if (!dataHome.path) {
        return std::nullopt;
    }
    return (*dataHome.path / qbidentity::kApplicationGroupIdentifier).string();
}

std::optional<std::string> QBQuotesDBHelper::getApplicationGroupFolder()
{
    const std::optional<std::string> container = getApplicationGroupContainer();
    if (!container) {
        return std::nullopt;
    }
    return (fs::path(*container) / kSupportSubPath).string();
}

std::optional<std::string> QBQuotesDBHelper::getPathToQuotesDb()
{
    const std::optional<std::string> folder = getApplicationGroupFolder();
    if (!folder) {
        return std::nullopt;
    }
    return (fs::path(*folder) / kQuotesDbFileName).string();
}

void QBQuotesDBHelper::createApplicationGroupAppSupportFolder()
{
    const std::optional<std::string> folder = getApplicationGroupFolder();
    if (!folder) {
        logWarning("Failed to create folder for application group: %s",
                   "The application group container is unavailable");
        return;
    }
    boost::system::error_code code;
    if (fs::exists(*folder, code)) {
        return;
    }
    fs::create_directories(*folder, code);
    if (code) {
        const std::string description = "Cannot create folder '" + *folder + "': " + code.message();
        logWarning("Failed to create folder for application group: %s", description.c_str());
    }
}

void QBQuotesDBHelper::copyDefaultQuotesToQuotesDb(const std::optional<std::string>& targetPath)
{
    const std::optional<std::string> seedPath =
        QBBundle::mainBundle().pathForResource(kSeedResourceName, kSeedResourceType);
    if (!seedPath) {
        // The message names no path on purpose: there is none to name.
        logWarning("Failed to locate sample quotes db in app bundle: %s", kMissingObjectText);
        return;
    }
    boost::system::error_code code;
    if (!targetPath) {
        code = make_error_code(boost::system::errc::no_such_file_or_directory);
    } else {
        // copy_options::none fails when the target exists: the seed never overwrites.
        fs::copy_file(*seedPath, *targetPath, fs::copy_options::none, code);
        // The copy takes the installed seed's mode; the user's collection is theirs alone.
        if (!code) {
            fs::permissions(*targetPath, fs::perms::owner_read | fs::perms::owner_write, code);
        }
    }
    if (code) {
        const std::string description = "Cannot copy '" + *seedPath + "' to '" +
                                        targetPath.value_or(kMissingObjectText) +
                                        "': " + code.message();
        logWarning("Failed to copy default quotes db to app support folder: %s",
                   description.c_str());
    }
}

bool QBQuotesDBHelper::fileExistsAtPath(const std::optional<std::string>& path)
{
    boost::system::error_code code;
    return path && fs::exists(*path, code);
}

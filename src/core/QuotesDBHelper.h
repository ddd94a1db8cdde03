#pragma once

#include <optional>
#include <string>

// Where the quotes database lives and how it is put in place on first launch. The
// database sits in the application-group container shared with the helper process
// ($XDG_DATA_HOME/<group id> here), under "Library/Application Support". A path of
// nothing means the container is unavailable; every path built on it is nothing too.
class QBQuotesDBHelper
{
public:
    static constexpr const char* kSupportSubPath = "Library/Application Support";
    static constexpr const char* kQuotesDbFileName = "quotes.db";
    static constexpr const char* kSeedResourceName = "signatures";
    static constexpr const char* kSeedResourceType = "json";

    // $XDG_DATA_HOME/<application-group id>, whether or not it exists yet.
    static std::optional<std::string> getApplicationGroupContainer();
    // <container>/Library/Application Support
    static std::optional<std::string> getApplicationGroupFolder();
    // <container>/Library/Application Support/quotes.db
    static std::optional<std::string> getPathToQuotesDb();

    // Creates the support folder with its parents when nothing exists there yet.
    static void createApplicationGroupAppSupportFolder();
    // Copies the bundle's seed collection to |targetPath|; never overwrites a file.
    static void copyDefaultQuotesToQuotesDb(const std::optional<std::string>& targetPath);

    // Whether a file or folder exists at |path| (never for a missing path).
    static bool fileExistsAtPath(const std::optional<std::string>& path);

    // Text that stands for a missing path in messages, as the platform formatter prints it.
    static constexpr const char* kMissingObjectText = "(null)";
};

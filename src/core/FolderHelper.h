#pragma once

#include <optional>
#include <string>

// Per-user folders of the application outside the shared container: the logs folder
// (under the user library folder, $XDG_STATE_HOME here) and the per-application support
// folder ($XDG_DATA_HOME/Quillbox2). Failures are printed, logged and give nothing.
class QBFolderHelper
{
public:
    // <user library folder>/Logs; the library folder is created, "Logs" is not.
    static std::optional<std::string> getPathToLogsFolder();
    // <application-support folder>/<bundle name>, created when missing.
    static std::optional<std::string> getCreatePathToAppSupportFolder();
};

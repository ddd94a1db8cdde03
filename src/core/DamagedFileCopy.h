#pragma once

#include <optional>
#include <string>

// Copies the file at |path| (a regular file, or a link to one) to a new file beside it
// named "<name>.damaged-<YYYYmmdd-HHMMSS>" (local time; "-2", "-3"... appended when that
// name is taken), so a later save cannot destroy what a failed load could not read.
// Returns the copy's path; nothing when there is no file to copy. Throws
// boost::filesystem::filesystem_error when the copy fails.
std::optional<std::string> keepCopyOfDamagedFile(const std::string& path);

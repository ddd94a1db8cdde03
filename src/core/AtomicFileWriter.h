#pragma once

#include "core/FileIdentity.h"

#include <functional>
#include <ostream>
#include <string>

// Replaces the contents of the file at |path| with what |writeContents| writes to the
// stream it is given (buffered straight into the file), so that, whatever happens
// (a crash, a kill, a full disk), the file holds either its old or its new contents:
// the bytes go to a temporary file in the same folder, are flushed to disk and then
// renamed over the file. A symbolic link at |path| is followed, so the file it points
// to is replaced and the link stays. The file keeps its permission bits; a new file is
// readable by its owner only. A file without write permission is refused.
// |beforeReplacing|, when given, runs with the real target's path after the new contents
// are on disk and just before the rename; what it throws cancels the save.
// Returns the identity of the new file. Throws std::system_error on failure (or passes on
// what the callbacks throw), leaving the old file and no temporary file.
QBFileIdentity
replaceFileAtomically(const std::string& path,
                      const std::function<void(std::ostream&)>& writeContents,
                      const std::function<void(const std::string& target)>& beforeReplacing = {});

// Removes the temporary files that saves of |path|, or of the copies kept beside it, left
// behind when they were killed midway. A file that a running save still holds is left
// alone. Returns how many were removed.
int removeStaleTemporaryFiles(const std::string& path);

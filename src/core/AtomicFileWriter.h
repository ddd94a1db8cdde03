#pragma once

#include <functional>
#include <ostream>
#include <string>

// Replaces the contents of the file at |path| with what |writeContents| writes to the
// stream it is given (buffered straight into the file), so that, whatever happens
// (a crash, a kill, a full disk), the file holds either its old or its new contents:
// the bytes go to a temporary file in the same folder, are flushed to disk and then
// renamed over the file. A symbolic link at |path| is followed, so the file it points
// to is replaced and the link stays. The file keeps its permission bits.
// Throws std::system_error on failure (or passes on what |writeContents| throws), leaving
// the old file and no temporary file.
void replaceFileAtomically(const std::string& path,
                           const std::function<void(std::ostream&)>& writeContents);

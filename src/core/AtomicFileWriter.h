#pragma once

#include <string>
#include <string_view>

// Replaces the contents of the file at |path| with |bytes| so that, whatever happens
// (a crash, a kill, a full disk), the file holds either its old or its new contents:
// the bytes go to a temporary file in the same folder, are flushed to disk and then
// renamed over the file. A symbolic link at |path| is followed, so the file it points
// to is replaced and the link stays. The file keeps its permission bits.
// Throws std::system_error on failure, leaving the old file and no temporary file.
void replaceFileAtomically(const std::string& path, std::string_view bytes);

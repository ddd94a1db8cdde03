#pragma once

#include <cstddef>
#include <optional>
#include <string>

// Copies of a file kept beside it, named "<name>.<kind>-<YYYYmmdd-HHMMSS>" (local time;
// "-2", "-3"... appended when that name is taken), so that nothing a later save writes
// can destroy what they hold.
struct QBKeptCopy
{
    std::string path;
    // The newest existing copy already held the same bytes, so no new one was made.
    bool alreadyKept = false;
};

// Keeps a copy of the regular file at |path| (links followed) unless the newest copy of
// this |kind| already holds the same bytes. A copy is written crash-safely: it is whole
// or absent. With |maxKept| above 0, only that many of the newest copies stay.
// Nothing when there is no regular file at |path|; throws std::exception on failure.
std::optional<QBKeptCopy> keepCopyOfFile(const std::string& path, const std::string& kind,
                                         std::size_t maxKept = 0);

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The process-wide log: every line goes to standard output, to the log file (once
// set up) and into a bounded history of recent lines. Callable from any thread.

namespace qblog {

// Same numbering as Boost.Log's trivial severity scale.
enum class Level : int
{
    Debug = 1,
    Info = 2,
    Warning = 3,
    Error = 4
};

// Log file size (in units of 1024 bytes) past which the file starts afresh at launch.
inline constexpr unsigned long kDefaultFileSizeLimitKiB = 250;
// Longest message kept; longer ones are cut to this many bytes.
inline constexpr std::size_t kMaxMessageBytes = 4095;
// Lines kept in the in-memory history.
inline constexpr std::size_t kMaxHistoryLines = 4096;
// numberOfWarnings() never counts beyond this.
inline constexpr std::size_t kMaxCountedWarnings = 101;

// Adds the file sink at |logFilePath| (replacing an earlier one), deletes the file
// first when it is larger than |sizeLimitKiB| * 1024 bytes, sets the level to debug
// and logs "Logging established (level: debug)".
void setupLogging(const std::string& logFilePath,
                  unsigned long sizeLimitKiB = kDefaultFileSizeLimitKiB, bool autoFlush = true);

// Detaches the file sink, if any (used when a process wants to stop writing the file).
void removeLogFileSink();

void setLogLevel(Level level);
Level logLevel();
// The current level as Boost.Log's lower-case word ("debug", "info", ...).
std::string logLevelName();

// Newest history lines that carry |level|'s bracket text, newest first, at most
// |maxCount| of them. Waits until every line logged before the call is in the history.
std::vector<std::string> recentLogLines(std::size_t maxCount, Level level);
// WARN lines among the recent history, counted up to kMaxCountedWarnings.
std::size_t numberOfWarnings();
// Empties the history (it is otherwise only ever trimmed from the front).
void clearLogHistory();

} // namespace qblog

// printf-style entry points, one per level; the compiler checks the arguments.
void logDebug(const char* format, ...) __attribute__((format(printf, 1, 2)));
void logInfo(const char* format, ...) __attribute__((format(printf, 1, 2)));
void logWarning(const char* format, ...) __attribute__((format(printf, 1, 2)));
void logError(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Log one finished text as it stands: a "%" in it is not a format directive.
void logDebugMessage(std::string_view message);
void logInfoMessage(std::string_view message);
void logWarningMessage(std::string_view message);
void logErrorMessage(std::string_view message);

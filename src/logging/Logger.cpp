#include "logging/Logger.h"

#include <boost/core/null_deleter.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/filesystem.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/support/date_time.hpp>
#include <boost/log/utility/setup/common_attributes.hpp>
#include <boost/log/utility/setup/console.hpp>

#include <ext/stdio_filebuf.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

namespace logging = boost::log;
namespace expr = boost::log::expressions;
namespace trivial = boost::log::trivial;

namespace {

// "2026-11-16 01:40:12: [info]   message"
auto lineFormat()
{
    return expr::stream << expr::format_date_time<boost::posix_time::ptime>("TimeStamp",
                                                                            "%Y-%m-%d %H:%M:%S")
                        << ": [" << trivial::severity << "]   " << expr::smessage;
}

const char* historyWord(qblog::Level level)
{
    switch (level) {
    case qblog::Level::Info:
        return "INFO";
    case qblog::Level::Warning:
        return "WARN";
    case qblog::Level::Error:
        return "ERROR";
    case qblog::Level::Debug:
        break;
    }
    return "DEBUG";
}

// "[" and the level's word, padded to 9 characters, then "] :  ".
std::string bracketText(qblog::Level level)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer,
                  "%-9s] :  ", (std::string("[") + historyWord(level)).c_str());
    return buffer;
}

std::string localTimeStamp(const char* format)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[64];
    const std::size_t length = std::strftime(buffer, sizeof buffer, format, &local);
    return std::string(buffer, length);
}

// An output stream over a file descriptor that it closes when it goes.
class DescriptorOutputStream : public std::ostream
{
public:
    explicit DescriptorOutputStream(int descriptor)
        : std::ostream(nullptr), mBuffer(descriptor, std::ios::out | std::ios::app)
    {
        rdbuf(&mBuffer);
    }

private:
    __gnu_cxx::stdio_filebuf<char> mBuffer;
};

// The log file, readable by its owner only when created. Opening never waits (a FIFO
// without a reader fails instead of blocking), and a file that cannot be opened is
// reported once on standard error, since the log cannot say so itself.
boost::shared_ptr<std::ostream> openLogFile(const std::string& path)
{
    const int descriptor = ::open(
        path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0600);
    if (descriptor < 0) {
        std::fprintf(stderr, "Cannot open the log file %s: %s\n", path.c_str(),
                     std::strerror(errno));
        return nullptr;
    }
    return boost::make_shared<DescriptorOutputStream>(descriptor);
}

} // namespace

QBLogger& QBLogger::instance()
{
    static QBLogger logger;
    return logger;
}

QBLogger::QBLogger()
{
    logging::add_common_attributes();
    logging::add_console_log(std::cout, logging::keywords::format = lineFormat(),
                             logging::keywords::auto_flush = true);
    setLevel(qblog::Level::Debug);
}

void QBLogger::setLevel(qblog::Level level)
{
    mLevel.store(static_cast<int>(level));
    logging::core::get()->set_filter(trivial::severity >=
                                     static_cast<trivial::severity_level>(level));
}

void QBLogger::log(qblog::Level level, const char* format, va_list arguments)
{
    if (mLevel.load() > static_cast<int>(level)) {
        return;
    }
    char buffer[qblog::kMaxMessageBytes + 1];
    const int written = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    const std::string message = written < 0 ? std::string() : std::string(buffer);

    BOOST_LOG_SEV(mSource, static_cast<trivial::severity_level>(level)) << message;
    mHistoryQueue.async([this, level, message] { appendToHistory(level, message); });
}

void QBLogger::appendToHistory(qblog::Level level, const std::string& message)
{
    char prefix[64];
    std::snprintf(prefix, sizeof prefix, "%-19s %s", localTimeStamp("%d-%m-%Y %T").c_str(),
                  bracketText(level).c_str());
    mHistory.push_back(prefix + message);
    if (mHistory.size() > qblog::kMaxHistoryLines) {
        mHistory.pop_front();
    }
}

std::vector<std::string> QBLogger::history(std::size_t maxCount, qblog::Level level)
{
    const std::string needle = bracketText(level);
    std::vector<std::string> lines;
    mHistoryQueue.sync([&] {
        for (auto line = mHistory.rbegin(); line != mHistory.rend() && lines.size() < maxCount;
             ++line) {
            if (line->find(needle) != std::string::npos) {
                lines.push_back(*line);
            }
        }
    });
    return lines;
}

void QBLogger::clearHistory()
{
    mHistoryQueue.sync([this] { mHistory.clear(); });
}

void QBLogger::setup(const std::string& path, unsigned long sizeLimitKiB, bool autoFlush)
{
    // Only a plain file is ever deleted: a link, a FIFO or a device at the path stays.
    struct stat status
    {
    };
    if (::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
        static_cast<unsigned long long>(status.st_size) > sizeLimitKiB * 1024ULL) {
        ::unlink(path.c_str());
    }
    // A first launch has no Logs folder yet; without it the log would be lost.
    const boost::filesystem::path filePath(path);
    boost::system::error_code error;
    if (filePath.has_parent_path()) {
        boost::filesystem::create_directories(filePath.parent_path(), error);
    }

    auto backend = boost::make_shared<logging::sinks::text_ostream_backend>();
    if (auto stream = openLogFile(path)) {
        backend->add_stream(stream);
    }
    backend->auto_flush(autoFlush);
    auto sink = boost::make_shared<FileSink>(backend);
    sink->set_formatter(lineFormat());
    {
        std::lock_guard lock(mFileSinkMutex);
        if (mFileSink) {
            logging::core::get()->remove_sink(mFileSink);
        }
        mFileSink = sink;
        logging::core::get()->add_sink(sink);
    }
    setLevel(qblog::Level::Debug);
    logInfo("Logging established (level: %s)", qblog::logLevelName().c_str());
}

void QBLogger::removeFileSink()
{
    std::lock_guard lock(mFileSinkMutex);
    if (mFileSink) {
        logging::core::get()->remove_sink(mFileSink);
        mFileSink.reset();
    }
}

// ---- free entry points -----------------------------------------------------------

namespace qblog {

void setupLogging(const std::string& logFilePath, unsigned long sizeLimitKiB, bool autoFlush)
{
    QBLogger::instance().setup(logFilePath, sizeLimitKiB, autoFlush);
}

void removeLogFileSink()
{
    QBLogger::instance().removeFileSink();
}

void setLogLevel(Level level)
{
    QBLogger::instance().setLevel(level);
}

Level logLevel()
{
    return QBLogger::instance().level();
}

std::string logLevelName()
{
    std::ostringstream word;
    word << static_cast<trivial::severity_level>(logLevel());
    return word.str();
}

std::vector<std::string> recentLogLines(std::size_t maxCount, Level level)
{
    return QBLogger::instance().history(maxCount, level);
}

std::size_t numberOfWarnings()
{
    return recentLogLines(kMaxCountedWarnings, Level::Warning).size();
}

void clearLogHistory()
{
    QBLogger::instance().clearHistory();
}

} // namespace qblog

#define QB_DEFINE_LOG_ENTRY(function, level)                                                       \
    void function(const char* format, ...)                                                         \
    {                                                                                              \
        va_list arguments;                                                                         \
        va_start(arguments, format);                                                               \
        QBLogger::instance().log(level, format, arguments);                                        \
        va_end(arguments);                                                                         \
    }                                                                                              \
    void function##Message(std::string_view message)                                               \
    {                                                                                              \
        function("%.*s", static_cast<int>(message.size()), message.data());                        \
    }

QB_DEFINE_LOG_ENTRY(logDebug, qblog::Level::Debug)
QB_DEFINE_LOG_ENTRY(logInfo, qblog::Level::Info)
QB_DEFINE_LOG_ENTRY(logWarning, qblog::Level::Warning)
QB_DEFINE_LOG_ENTRY(logError, qblog::Level::Error)

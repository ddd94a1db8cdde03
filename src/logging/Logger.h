#pragma once

#include "logging/Log.h"
#include "logging/SerialQueue.h"

#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/log/sources/severity_logger.hpp>
#include <boost/log/trivial.hpp>

#include <atomic>
#include <deque>
#include <mutex>
#include <string>

// The one logger behind the entry points of Log.h: Boost.Log sinks for standard
// output and the log file, the level filter, and the history of recent lines, which
// lives on its own serial queue so that callers never wait for it.
class QBLogger
{
public:
    static constexpr const char* kQueueLabel = "org.quillbox2.tool.logging";

    static QBLogger& instance();

    void log(qblog::Level level, const char* format, va_list arguments);
    void setup(const std::string& path, unsigned long sizeLimitKiB, bool autoFlush);
    void removeFileSink();

    void setLevel(qblog::Level level);
    qblog::Level level() const { return static_cast<qblog::Level>(mLevel.load()); }

    std::vector<std::string> history(std::size_t maxCount, qblog::Level level);
    void clearHistory();

private:
    using FileSink = boost::log::sinks::synchronous_sink<boost::log::sinks::text_ostream_backend>;

    QBLogger();
    void appendToHistory(qblog::Level level, const std::string& message);

    std::atomic<int> mLevel{static_cast<int>(qblog::Level::Debug)};
    boost::log::sources::severity_logger_mt<boost::log::trivial::severity_level> mSource;
    std::mutex mFileSinkMutex;
    boost::shared_ptr<FileSink> mFileSink;
    std::deque<std::string> mHistory; // touched only on mHistoryQueue
    QBSerialQueue mHistoryQueue;      // declared last: stops (and drains) first
};

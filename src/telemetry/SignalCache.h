#pragma once

#include "LogHandler.h"
#include "SignalCacheFile.h"

#include <QList>
#include <QReadWriteLock>
#include <QString>

#include <optional>

// Ordered, thread-safe list of records waiting to be posted, bounded in size, loaded
// from its file when created and saved to it at exit. |Element| provides
// encodeList(QList) -> QByteArray and decodeList(QByteArray) -> optional<QList>.
template <typename Element> class SignalCache
{
public:
    static constexpr qsizetype maximumNumberOfSignalsToPopAtOnce = 100;
    static constexpr qsizetype maximumNumberOfCachedSignals = 10000;
    // 10,000 records of 6,400 bytes, several times the size of a record with the full
    // default payload: a larger file was not written by this cache.
    static constexpr qint64 maximumCacheFileBytes = 64'000'000;

    // Keeps its records in the file at |filePath|; an empty path keeps them in memory.
    // A default LogHandler has no handler and logs nothing.
    explicit SignalCache(QString filePath, LogHandler logHandler = {})
        : mFilePath(std::move(filePath)), mLogHandler(std::move(logHandler))
    {}

    void push(const Element& element) { push(QList<Element>{element}); }

    // Appends |elements| in order; past the bound the oldest records make room.
    void push(const QList<Element>& elements)
    {
        qsizetype dropped = 0;
        {
            QWriteLocker locker(&mLock);
            mCachedSignals.append(elements);
            dropped = qMax<qsizetype>(0, mCachedSignals.size() - maximumNumberOfCachedSignals);
            mCachedSignals.remove(0, dropped);
        }
        if (dropped > 0) {
            log(LogHandler::LogLevel::debug,
                QStringLiteral("Signal cache is full: dropped the %1 oldest signals").arg(dropped));
        }
    }

    qsizetype count() const
    {
        QReadLocker locker(&mLock);
        return mCachedSignals.size();
    }

    // Takes up to maximumNumberOfSignalsToPopAtOnce records off the front.
    QList<Element> pop()
    {
        QWriteLocker locker(&mLock);
        const qsizetype size = qMin(maximumNumberOfSignalsToPopAtOnce, mCachedSignals.size());
        QList<Element> batch = mCachedSignals.first(size);
        mCachedSignals.remove(0, size);
        return batch;
    }

    // Every cached record, oldest first, without removing any.
    QList<Element> allSignals() const
    {
        QReadLocker locker(&mLock);
        return mCachedSignals;
    }

    void saveToFile()
    {
        if (mFilePath.isEmpty()) {
            return;
        }
        QWriteLocker locker(&mLock);
        const QByteArray data = Element::encodeList(mCachedSignals);
        if (qbsignalcachefile::writeAtomically(mFilePath, data)) {
            log(LogHandler::LogLevel::debug,
                QStringLiteral("Saved Telemetry cache %1 bytes of %2 signals")
                    .arg(data.size())
                    .arg(mCachedSignals.size()));
        } else {
            log(LogHandler::LogLevel::error, QStringLiteral("Error saving Telemetry cache"));
        }
    }

    // Reads and deletes the file, putting its newest records before any already cached.
    // A file that is not a regular file, or larger than the bound allows, is not read.
    void loadFromFile()
    {
        if (mFilePath.isEmpty()) {
            return;
        }
        log(LogHandler::LogLevel::debug,
            QStringLiteral("Loading Telemetry cache from: ") + mFilePath);
        QString problem;
        const std::optional<QByteArray> bytes =
            qbsignalcachefile::takeContents(mFilePath, maximumCacheFileBytes, problem);
        if (!bytes) {
            if (!problem.isEmpty()) {
                log(LogHandler::LogLevel::error, problem);
            }
            return;
        }
        const std::optional<QList<Element>> loaded = Element::decodeList(*bytes);
        if (!loaded) {
            log(LogHandler::LogLevel::debug,
                QStringLiteral("Discarded a damaged Telemetry cache file"));
            return;
        }
        QWriteLocker locker(&mLock);
        mCachedSignals =
            loaded->last(qMin(loaded->size(), maximumNumberOfCachedSignals)) + mCachedSignals;
        mCachedSignals.remove(
            0, qMax<qsizetype>(0, mCachedSignals.size() - maximumNumberOfCachedSignals));
        log(LogHandler::LogLevel::debug, QStringLiteral("Loaded %1 signals").arg(loaded->size()));
    }

private:
    void log(LogHandler::LogLevel level, const QString& message) const
    {
        mLogHandler.log(level, message);
    }

    const QString mFilePath;
    const LogHandler mLogHandler;
    mutable QReadWriteLock mLock;
    QList<Element> mCachedSignals; // guarded by mLock
};

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

// Runs submitted jobs one after another on its own thread, in submission order.
class QBSerialQueue
{
public:
    QBSerialQueue();
    ~QBSerialQueue();
    QBSerialQueue(const QBSerialQueue&) = delete;
    QBSerialQueue& operator=(const QBSerialQueue&) = delete;

    // Queues |job| and returns at once.
    void async(std::function<void()> job);
    // Queues |job| and waits until it has run (after everything queued before it).
    void sync(const std::function<void()>& job);

private:
    void run();

    std::mutex mMutex;
    std::condition_variable mWake;
    std::deque<std::function<void()>> mJobs;
    bool mStopping = false;
    std::thread mWorker;
};

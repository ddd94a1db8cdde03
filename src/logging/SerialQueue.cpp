#include "logging/SerialQueue.h"

#include <future>

QBSerialQueue::QBSerialQueue() : mWorker([this] { run(); }) {}

QBSerialQueue::~QBSerialQueue()
{
    {
        std::lock_guard lock(mMutex);
        mStopping = true;
    }
    mWake.notify_one();
    mWorker.join();
}

void QBSerialQueue::async(std::function<void()> job)
{
    {
        std::lock_guard lock(mMutex);
        mJobs.push_back(std::move(job));
    }
    mWake.notify_one();
}

void QBSerialQueue::sync(const std::function<void()>& job)
{
    if (std::this_thread::get_id() == mWorker.get_id()) {
        job(); // already on the queue: waiting for ourselves would never end
        return;
    }
    std::promise<void> done;
    async([&job, &done] {
        job();
        done.set_value();
    });
    done.get_future().wait();
}

void QBSerialQueue::run()
{
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mMutex);
            mWake.wait(lock, [this] { return mStopping || !mJobs.empty(); });
            if (mJobs.empty()) {
                return; // stopping, and everything queued has run
            }
            job = std::move(mJobs.front());
            mJobs.pop_front();
        }
        job();
    }
}

#include "UpdateNotifier.h"

namespace cmatrix::sdk {

UpdateNotifier::~UpdateNotifier()
{
    stop();
}

void UpdateNotifier::setCallback(CMatrix_UpdateCallback callback, void* user)
{
    std::lock_guard<std::mutex> lock(shared_->mutex);
    shared_->callback = callback;
    shared_->user = user;
}

void UpdateNotifier::post(const UpdateStatus_t& status)
{
    {
        std::lock_guard<std::mutex> lock(shared_->mutex);
        if (shared_->stopping || !shared_->callback)
            return;
        shared_->queue.push_back(status);
    }
    shared_->wake.notify_one();
    std::lock_guard<std::mutex> lock(threadMutex_);
    if (!thread_.joinable())
        thread_ = std::thread(run, shared_);
}

void UpdateNotifier::stop()
{
    {
        std::lock_guard<std::mutex> lock(shared_->mutex);
        shared_->stopping = true;
        shared_->queue.clear();
    }
    shared_->wake.notify_one();
    std::thread thread;
    {
        std::lock_guard<std::mutex> lock(threadMutex_);
        thread = std::move(thread_);
    }
    if (!thread.joinable())
        return;
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else
        thread.join();
}

void UpdateNotifier::run(const std::shared_ptr<Shared>& shared)
{
    std::unique_lock<std::mutex> lock(shared->mutex);
    for (;;) {
        shared->wake.wait(lock, [&] { return shared->stopping || !shared->queue.empty(); });
        if (shared->stopping)
            return;
        const UpdateStatus_t status = shared->queue.front();
        shared->queue.pop_front();
        CMatrix_UpdateCallback callback = shared->callback;
        void* user = shared->user;
        lock.unlock();
        if (callback)
            callback(&status, user);
        lock.lock();
    }
}

} // namespace cmatrix::sdk

#pragma once

#include "CMatrixSDK.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace cmatrix::sdk {

// Hands firmware progress to the caller's update callback on a thread of its own.
// Progress is read off the connection by whichever thread happens to read it, a
// caller's among them; queueing it here keeps the callback on an SDK thread, so it
// may call the SDK back without stalling the call that read it.
class UpdateNotifier {
public:
    UpdateNotifier() = default;
    ~UpdateNotifier();
    UpdateNotifier(const UpdateNotifier&) = delete;
    UpdateNotifier& operator=(const UpdateNotifier&) = delete;

    void setCallback(CMatrix_UpdateCallback callback, void* user);
    // Queued for the callback; dropped when there is none or once stopped.
    void post(const UpdateStatus_t& status);
    // Drops what is queued and ends the thread (waits for it unless called from it).
    void stop();

private:
    struct Shared {
        std::mutex mutex;
        std::condition_variable wake;
        std::deque<UpdateStatus_t> queue;
        CMatrix_UpdateCallback callback = nullptr;
        void* user = nullptr;
        bool stopping = false;
    };
    static void run(const std::shared_ptr<Shared>& shared);

    // Shared with the thread, which may outlive this object when the handle is
    // destroyed from inside its own callback.
    const std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
    std::mutex threadMutex_;
    std::thread thread_;
};

} // namespace cmatrix::sdk

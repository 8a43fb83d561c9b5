#include "FirmwareJob.h"

#include "net/Outbox.h"

#include "Message.h"
#include "Messages.h"

#include <algorithm>
#include <cstring>

namespace vdec {

using namespace cmatrix::wire;

FirmwareJob::~FirmwareJob()
{
    stop();
}

std::vector<uint8_t> FirmwareJob::progressMessage(const UpdateStatus_t& status)
{
    // Payload first, then the header in front: the same bytes as Message::encode, in a
    // form the compiler's bounds analysis follows.
    std::vector<uint8_t> payload;
    PayloadWriter writer(payload);
    UpdateStatusRecord { status }.visit(writer);
    WireHeader header;
    header.type = uint16_t(MessageType::FirmwareProgress);
    header.length = uint32_t(payload.size());
    std::vector<uint8_t> message(WireHeader::kSize);
    header.encode(message.data());
    message.insert(message.end(), payload.begin(), payload.end());
    return message;
}

bool FirmwareJob::start(const std::string& version, std::shared_ptr<Outbox> outbox, int stepMs, Install install)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (running_ || stopping_)
        return false;
    // The previous upgrade has finished; its thread is at most returning.
    if (thread_.joinable())
        thread_.join();
    running_ = true;
    thread_ = std::thread(&FirmwareJob::run, this, version, std::move(outbox),
        std::chrono::milliseconds(std::max(0, stepMs)), std::move(install));
    return true;
}

bool FirmwareJob::running() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return running_;
}

void FirmwareJob::stop()
{
    std::thread thread;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
        thread = std::move(thread_);
    }
    wake_.notify_all();
    if (thread.joinable())
        thread.join();
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = false;
}

bool FirmwareJob::pause(std::chrono::milliseconds step)
{
    std::unique_lock<std::mutex> lock(mutex_);
    return !wake_.wait_for(lock, step, [this] { return stopping_; });
}

void FirmwareJob::run(
    std::string version, std::shared_ptr<Outbox> outbox, std::chrono::milliseconds step, Install install)
{
    auto report = [&outbox](int32_t state, int32_t progress, const std::string& installed) {
        UpdateStatus_t status {};
        status.state = state;
        status.progress = progress;
        status.result = CMATRIX_OK;
        std::memcpy(status.version, installed.data(), std::min(installed.size(), sizeof status.version - 1));
        if (outbox)
            outbox->push(progressMessage(status));
    };
    bool completed = true;
    for (int progress = 0; progress <= 100; progress += 10) {
        report(UPDATE_STATE_UPGRADING, progress, {});
        if (!pause(step)) {
            completed = false;
            break;
        }
    }
    if (completed) {
        install(version);
        report(UPDATE_STATE_FINISHED, 100, version);
    }
    std::lock_guard<std::mutex> lock(mutex_);
    running_ = false;
}

} // namespace vdec

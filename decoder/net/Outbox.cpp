#include "Outbox.h"

namespace vdec {

bool Outbox::push(std::vector<uint8_t> message)
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (closed_ || queue_.size() >= kMaxQueued)
            return false;
        queue_.push_back(std::move(message));
    }
    notifier_.notify();
    return true;
}

std::vector<std::vector<uint8_t>> Outbox::take()
{
    notifier_.drain();
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<std::vector<uint8_t>> messages(
        std::make_move_iterator(queue_.begin()), std::make_move_iterator(queue_.end()));
    queue_.clear();
    return messages;
}

void Outbox::close()
{
    std::lock_guard<std::mutex> lock(mutex_);
    closed_ = true;
    queue_.clear();
}

} // namespace vdec

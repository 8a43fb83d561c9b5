#pragma once

#include "Message.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cmatrix::wire {

// Cuts a TCP byte stream into messages. A bad header is final: the connection
// it came from cannot be resynchronised and must be closed.
class MessageStream {
public:
    enum class Status { Message, NeedMore, Error };

    void append(const uint8_t* data, size_t size);
    Status next(Message& out);
    WireHeader::Parse error() const { return error_; }
    size_t buffered() const { return buffer_.size() - offset_; }

private:
    std::vector<uint8_t> buffer_;
    size_t offset_ = 0;
    WireHeader::Parse error_ = WireHeader::Parse::Ok;
};

} // namespace cmatrix::wire

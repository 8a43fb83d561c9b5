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
    // The header of the next message once it has arrived whole; its payload may not have.
    bool peekHeader(WireHeader& out) const;
    // Drops the next message (its header must have arrived) without keeping its payload,
    // including the part still on its way: an answer too large to want costs no memory.
    void skipMessage();
    WireHeader::Parse error() const { return error_; }
    size_t buffered() const { return buffer_.size() - offset_; }

private:
    std::vector<uint8_t> buffer_;
    size_t offset_ = 0;
    size_t skip_ = 0; // payload bytes still to drop as they arrive
    WireHeader::Parse error_ = WireHeader::Parse::Ok;
};

} // namespace cmatrix::wire

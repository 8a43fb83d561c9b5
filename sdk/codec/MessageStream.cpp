#include "MessageStream.h"

#include <algorithm>

namespace cmatrix::wire {

void MessageStream::append(const uint8_t* data, size_t size)
{
    const size_t dropped = std::min(skip_, size);
    skip_ -= dropped;
    data += dropped;
    size -= dropped;
    // Drop what was consumed before growing, so the buffer stays about one message long.
    if (offset_ > 0 && offset_ == buffer_.size()) {
        buffer_.clear();
        offset_ = 0;
    } else if (offset_ > 64 * 1024) {
        buffer_.erase(buffer_.begin(), buffer_.begin() + std::ptrdiff_t(offset_));
        offset_ = 0;
    }
    buffer_.insert(buffer_.end(), data, data + size);
}

MessageStream::Status MessageStream::next(Message& out)
{
    if (error_ != WireHeader::Parse::Ok)
        return Status::Error;
    const uint8_t* p = buffer_.data() + offset_;
    const size_t available = buffer_.size() - offset_;
    const WireHeader::Parse parse = WireHeader::decode(p, available, out.header);
    if (parse == WireHeader::Parse::NeedMore)
        return Status::NeedMore;
    if (parse != WireHeader::Parse::Ok) {
        error_ = parse;
        return Status::Error;
    }
    if (available - WireHeader::kSize < out.header.length)
        return Status::NeedMore;
    const uint8_t* body = p + WireHeader::kSize;
    out.payload.assign(body, body + out.header.length);
    offset_ += WireHeader::kSize + out.header.length;
    return Status::Message;
}

bool MessageStream::peekHeader(WireHeader& out) const
{
    return error_ == WireHeader::Parse::Ok
        && WireHeader::decode(buffer_.data() + offset_, buffer_.size() - offset_, out) == WireHeader::Parse::Ok;
}

void MessageStream::skipMessage()
{
    WireHeader header;
    if (!peekHeader(header))
        return;
    offset_ += WireHeader::kSize;
    const size_t here = std::min(size_t(header.length), buffer_.size() - offset_);
    offset_ += here;
    skip_ = header.length - here;
}

} // namespace cmatrix::wire

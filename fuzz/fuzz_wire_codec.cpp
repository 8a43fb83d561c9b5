// Cuts arbitrary bytes into messages, once appended whole and once in small pieces
// (both must give the same messages), then decodes each payload as one payload struct,
// picked by the message's type (the fuzzer reaches every struct by changing the type;
// decoding each payload as all of them cost fifty times more per input). What decodes is
// encoded again: it must take as many bytes, differ only where a bool was not 0 or 1, and
// be a fixed point of decode and encode.

#include "FuzzCheck.h"
#include "Message.h"
#include "MessageStream.h"
#include "PayloadTypes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

using namespace cmatrix::wire;

namespace {

using Bytes = std::vector<uint8_t>;

Bytes payloadOf(const Bytes& encoded)
{
    return Bytes(encoded.begin() + std::ptrdiff_t(WireHeader::kSize), encoded.end());
}

template <class Body> void reencode(const Message& message)
{
    Body body;
    if (!message.decode(body))
        return;
    const Bytes first = Message::encode(message.type(), message.header.requestId, message.header.status, body);
    const Bytes payload = payloadOf(first);
    FUZZ_CHECK(payload.size() == message.payload.size());
    for (size_t i = 0; i < payload.size(); ++i)
        FUZZ_CHECK(payload[i] == message.payload[i] || (payload[i] == 1 && message.payload[i] > 1));

    Message copy;
    copy.header = message.header;
    copy.payload = payload;
    Body again;
    FUZZ_CHECK(copy.decode(again));
    FUZZ_CHECK(Message::encode(message.type(), message.header.requestId, message.header.status, again) == first);
}

template <class... Body> void decodeAsOne(const Message& message, PayloadTypeList<Body...>)
{
    const size_t pick = message.type() % sizeof...(Body);
    size_t index = 0;
    ((index++ == pick ? reencode<Body>(message) : void()), ...);
}

struct Cut {
    std::vector<Message> messages;
    MessageStream::Status last = MessageStream::Status::NeedMore;
};

void drain(MessageStream& stream, Cut& cut)
{
    while (cut.last != MessageStream::Status::Error) {
        Message message;
        cut.last = stream.next(message);
        if (cut.last != MessageStream::Status::Message)
            return;
        cut.messages.push_back(std::move(message));
    }
}

Cut cutWhole(const uint8_t* data, size_t size)
{
    MessageStream stream;
    Cut cut;
    stream.append(data, size);
    drain(stream, cut);
    return cut;
}

// Pieces of 1, 2, 3 ... 31 bytes, then again: lands on every boundary of a header.
Cut cutInPieces(const uint8_t* data, size_t size)
{
    MessageStream stream;
    Cut cut;
    size_t piece = 1;
    for (size_t at = 0; at < size && cut.last != MessageStream::Status::Error; at += piece, piece = piece % 31 + 1) {
        const size_t n = piece < size - at ? piece : size - at;
        stream.append(data + at, n);
        drain(stream, cut);
    }
    return cut;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const Cut whole = cutWhole(data, size);
    const Cut pieces = cutInPieces(data, size);
    FUZZ_CHECK(whole.last == pieces.last);
    FUZZ_CHECK(whole.messages.size() == pieces.messages.size());
    for (size_t i = 0; i < whole.messages.size(); ++i) {
        const Message& a = whole.messages[i];
        const Message& b = pieces.messages[i];
        FUZZ_CHECK(a.type() == b.type() && a.header.requestId == b.header.requestId);
        FUZZ_CHECK(a.header.status == b.header.status && a.payload == b.payload);
        FUZZ_CHECK(a.payload.size() == a.header.length);
        decodeAsOne(a, AllPayloadTypes {});
    }
    return 0;
}

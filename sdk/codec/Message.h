#pragma once

#include "MessageType.h"
#include "PayloadReader.h"
#include "PayloadWriter.h"
#include "WireHeader.h"

#include <cstdint>
#include <vector>

namespace cmatrix::wire {

// One whole message: header and payload bytes.
struct Message {
    WireHeader header;
    std::vector<uint8_t> payload;

    uint16_t type() const { return header.type; }

    // Header and payload of a message ready to send.
    template <class Body>
    static std::vector<uint8_t> encode(uint16_t type, uint32_t requestId, int32_t status, const Body& body)
    {
        std::vector<uint8_t> out(WireHeader::kSize);
        PayloadWriter writer(out);
        body.visit(writer);
        WireHeader h;
        h.type = type;
        h.requestId = requestId;
        h.status = status;
        h.length = uint32_t(out.size() - WireHeader::kSize);
        h.encode(out.data());
        return out;
    }

    // Fills body from the payload; false when it is short, long or malformed.
    template <class Body> bool decode(Body& body) const
    {
        PayloadReader reader(payload.data(), payload.size());
        body.visit(reader);
        return reader.ok() && reader.atEnd();
    }
};

} // namespace cmatrix::wire

#include "PayloadWriter.h"

#include "ByteOrder.h"

namespace cmatrix::wire {

void PayloadWriter::put(uint16_t v)
{
    uint8_t b[2];
    putBe16(b, v);
    out_.insert(out_.end(), b, b + 2);
}

void PayloadWriter::put(uint32_t v)
{
    uint8_t b[4];
    putBe32(b, v);
    out_.insert(out_.end(), b, b + 4);
}

void PayloadWriter::put(uint64_t v)
{
    uint8_t b[8];
    putBe64(b, v);
    out_.insert(out_.end(), b, b + 8);
}

void PayloadWriter::put(const std::string& s)
{
    put(uint32_t(s.size()));
    out_.insert(out_.end(), s.begin(), s.end());
}

} // namespace cmatrix::wire

#include "PayloadReader.h"

#include "ByteOrder.h"

namespace cmatrix::wire {

const uint8_t* PayloadReader::take(size_t n)
{
    if (!ok_ || n > remaining()) {
        ok_ = false;
        return nullptr;
    }
    const uint8_t* p = data_ + pos_;
    pos_ += n;
    return p;
}

void PayloadReader::get(bool& v)
{
    uint8_t b = 0;
    get(b);
    v = b != 0;
}

void PayloadReader::get(uint8_t& v)
{
    if (const uint8_t* p = take(1))
        v = *p;
}

void PayloadReader::get(uint16_t& v)
{
    if (const uint8_t* p = take(2))
        v = getBe16(p);
}

void PayloadReader::get(uint32_t& v)
{
    if (const uint8_t* p = take(4))
        v = getBe32(p);
}

void PayloadReader::get(int32_t& v)
{
    uint32_t u = 0;
    get(u);
    v = int32_t(u);
}

void PayloadReader::get(uint64_t& v)
{
    if (const uint8_t* p = take(8))
        v = getBe64(p);
}

void PayloadReader::get(std::string& s)
{
    uint32_t n = 0;
    get(n);
    if (const uint8_t* p = take(n))
        s.assign(reinterpret_cast<const char*>(p), n);
}

} // namespace cmatrix::wire

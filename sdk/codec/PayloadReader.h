#pragma once

#include "PayloadWriter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace cmatrix::wire {

// Reads fields back in FIELDS() order. Every length is checked against the bytes
// that remain before anything is allocated; the first failure sticks.
class PayloadReader {
public:
    PayloadReader(const uint8_t* data, size_t size)
        : data_(data)
        , size_(size)
    {
    }

    template <class... T> void operator()(T&... fields) { (get(fields), ...); }

    bool ok() const { return ok_; }
    bool atEnd() const { return pos_ == size_; }

    void get(bool& v);
    void get(uint8_t& v);
    void get(uint16_t& v);
    void get(uint32_t& v);
    void get(int32_t& v);
    void get(uint64_t& v);
    void get(std::string& s);

    template <class T> std::enable_if_t<isRecord<T>> get(T& record)
    {
        if (const uint8_t* p = take(sizeof(T)))
            std::memcpy(&record, p, sizeof(T));
    }

    template <class T> void get(std::vector<T>& list)
    {
        uint32_t count = 0;
        get(count);
        if (!ok_ || count > remaining() / minimumSize<T>()) {
            ok_ = false;
            return;
        }
        if constexpr (std::is_same_v<T, uint8_t>) {
            if (const uint8_t* p = take(count))
                list.assign(p, p + count);
        } else {
            list.resize(count);
            for (T& item : list)
                get(item);
        }
    }

private:
    template <class T> static constexpr size_t minimumSize()
    {
        if constexpr (std::is_same_v<T, std::string>)
            return 4;
        else if constexpr (std::is_same_v<T, bool>)
            return 1;
        else
            return sizeof(T);
    }

    size_t remaining() const { return size_ - pos_; }
    const uint8_t* take(size_t n);

    const uint8_t* data_;
    size_t size_;
    size_t pos_ = 0;
    bool ok_ = true;
};

} // namespace cmatrix::wire

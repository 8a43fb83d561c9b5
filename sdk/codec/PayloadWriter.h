#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace cmatrix::wire {

// SDK records (trivially copyable structs) travel as their raw bytes, in the
// SDK's little-endian layout; scalars and counts travel big-endian.
template <class T> constexpr bool isRecord = std::is_class_v<T>&& std::is_trivially_copyable_v<T>;

// Appends fields to a payload. Used through the FIELDS() list of a message body.
class PayloadWriter {
public:
    explicit PayloadWriter(std::vector<uint8_t>& out)
        : out_(out)
    {
    }

    template <class... T> void operator()(const T&... fields) { (put(fields), ...); }

    void put(bool v) { put(uint8_t(v ? 1 : 0)); }
    void put(uint8_t v) { out_.push_back(v); }
    void put(uint16_t v);
    void put(uint32_t v);
    void put(int32_t v) { put(uint32_t(v)); }
    void put(uint64_t v);
    void put(const std::string& s);

    template <class T> std::enable_if_t<isRecord<T>> put(const T& record)
    {
        const auto* p = reinterpret_cast<const uint8_t*>(&record);
        out_.insert(out_.end(), p, p + sizeof(T));
    }

    template <class T> void put(const std::vector<T>& list)
    {
        put(uint32_t(list.size()));
        if constexpr (std::is_same_v<T, uint8_t>) {
            out_.insert(out_.end(), list.begin(), list.end());
        } else {
            for (const T& item : list)
                put(item);
        }
    }

private:
    std::vector<uint8_t>& out_;
};

} // namespace cmatrix::wire

#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

// A clip cut into its pictures (access units), each beginning with its delimiter, in
// one buffer read once and shared by every stream that serves it.
class AccessUnits {
public:
    struct Unit {
        size_t offset = 0;
        size_t size = 0;
        bool key = false; // holds an IDR picture
    };

    bool load(const QString& path, QString* error);
    const std::vector<Unit>& units() const { return units_; }
    const uint8_t* data(const Unit& unit) const { return bytes_.data() + unit.offset; }

private:
    std::vector<uint8_t> bytes_;
    std::vector<Unit> units_;
};

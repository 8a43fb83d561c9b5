#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cmatrix::sdk {

// Files the maintenance calls read from or write to on the caller's machine.
// Results are CMATRIX codes.
class LocalFile {
public:
    // The whole file; CMATRIX_ERR_FILE_NOT_FOUND, _FILE_IO, or _TOO_LARGE past `limit` bytes.
    static int read(const std::string& path, size_t limit, std::vector<uint8_t>& out);
    // Replaces the file with `bytes`, through a temporary beside it, so a failed write
    // leaves the old file as it was.
    static int write(const std::string& path, const std::vector<uint8_t>& bytes);
    // The last component of a path, as the decoder is told it.
    static std::string baseName(const std::string& path);
};

} // namespace cmatrix::sdk

#include "CapacityLimits.h"

#include <algorithm>

namespace cmatrix::sdk {

namespace {

constexpr size_t kFixedFields = 64; // count prefix, window or scheme id, flags

} // namespace

MatrixCapacity_t CapacityLimits::ceiling()
{
    MatrixCapacity_t c {};
    c.maxCols = 32;
    c.maxRows = 32;
    c.maxWindows = 1024;
    c.maxDivision = 64;
    c.maxScreens = 1024;
    c.maxScenes = 256;
    c.maxSchemes = 256;
    c.maxSchemeDevices = 256;
    c.maxFiles = 4096;
    c.maxLogs = 65536;
    c.maxDistributions = 256;
    return c;
}

MatrixCapacity_t CapacityLimits::clamp(const MatrixCapacity_t& declared)
{
    const MatrixCapacity_t top = ceiling();
    MatrixCapacity_t c {};
    const auto fit = [](int32_t value, int32_t most) { return std::clamp(value, 1, most); };
    c.maxCols = fit(declared.maxCols, top.maxCols);
    c.maxRows = fit(declared.maxRows, top.maxRows);
    c.maxWindows = fit(declared.maxWindows, top.maxWindows);
    c.maxDivision = fit(declared.maxDivision, top.maxDivision);
    c.maxScreens = fit(declared.maxScreens, top.maxScreens);
    c.maxScenes = fit(declared.maxScenes, top.maxScenes);
    c.maxSchemes = fit(declared.maxSchemes, top.maxSchemes);
    c.maxSchemeDevices = fit(declared.maxSchemeDevices, top.maxSchemeDevices);
    c.maxFiles = fit(declared.maxFiles, top.maxFiles);
    c.maxLogs = fit(declared.maxLogs, top.maxLogs);
    c.maxDistributions = fit(declared.maxDistributions, top.maxDistributions);
    return c;
}

size_t CapacityLimits::listBytes(int count, size_t recordSize)
{
    return size_t(std::max(count, 0)) * recordSize + kFixedFields;
}

} // namespace cmatrix::sdk

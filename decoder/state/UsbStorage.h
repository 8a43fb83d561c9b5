#pragma once

#include "CMatrixSDK.h"

#include <QString>

#include <string>
#include <vector>

namespace vdec {

// The decoder's USB stick: the folder "usb" in the state directory. It is made,
// as a freshly formatted stick is, with a "System Volume Information" folder.
// Without a state directory there is no stick: the list is empty and nothing plays.
class UsbStorage {
public:
    static constexpr int kMaxEntries = 1000;
    static constexpr int kMaxPathBytes = int(sizeof(DeviceInfo_t::mainUrl)) - 1;

    explicit UsbStorage(const QString& stateDir);
    static QString folderOf(const QString& stateDir);

    bool prepare() const;
    // The top-level entries, folders first, by name; names too long for the record are left out.
    std::vector<DevPlayFile_t> list() const;
    // CMATRIX_OK when path (relative to the stick, a leading "/" allowed) names a
    // file on it; paths that leave the stick are refused.
    int32_t checkFile(const std::string& path) const;

private:
    QString root_;
};

} // namespace vdec

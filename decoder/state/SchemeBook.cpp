#include "SchemeBook.h"

#include "TextRules.h"

namespace vdec {

int32_t SchemeBook::checkInfo(const SchemeInfo_t& info)
{
    if (info.id == 0 || info.id > uint32_t(INT32_MAX))
        return CMATRIX_ERR_INVALID_PARAM;
    if (!TextRules::isFieldName(info.name, sizeof info.name))
        return CMATRIX_ERR_NAME;
    if (info.kind < 1 || info.kind > kMaxKind || info.interval < 1 || info.interval > kMaxInterval)
        return CMATRIX_ERR_INVALID_PARAM;
    return CMATRIX_OK;
}

bool SchemeBook::isDevice(const SchemeDevice_t& d)
{
    return TextRules::isTerminated(d.devId, sizeof d.devId) && TextRules::isTerminated(d.name, sizeof d.name)
        && TextRules::isTerminated(d.protocolName, sizeof d.protocolName) && TextRules::isTerminated(d.ip, sizeof d.ip)
        && TextRules::isTerminated(d.mainUrl, sizeof d.mainUrl) && TextRules::isTerminated(d.subUrl, sizeof d.subUrl)
        && TextRules::isTerminated(d.userName, sizeof d.userName)
        && TextRules::isTerminated(d.password, sizeof d.password);
}

int32_t SchemeBook::set(const SchemeInfo_t& info)
{
    if (int32_t rc = checkInfo(info))
        return rc;
    if (!schemes_.count(info.id) && schemes_.size() >= size_t(kMaxSchemes))
        return CMATRIX_ERR_LIMIT;
    schemes_[info.id].info = info;
    return CMATRIX_OK;
}

int32_t SchemeBook::remove(const std::vector<uint32_t>& ids)
{
    for (uint32_t id : ids) {
        if (!schemes_.count(id))
            return CMATRIX_ERR_SCHEME_NOT_FOUND;
    }
    for (uint32_t id : ids)
        schemes_.erase(id);
    return CMATRIX_OK;
}

int32_t SchemeBook::addDevices(uint32_t id, const std::vector<SchemeDevice_t>& devices, bool reset)
{
    auto it = schemes_.find(id);
    if (it == schemes_.end())
        return CMATRIX_ERR_SCHEME_NOT_FOUND;
    for (const SchemeDevice_t& d : devices) {
        if (!isDevice(d))
            return CMATRIX_ERR_INVALID_PARAM;
    }
    std::vector<SchemeDevice_t>& list = it->second.devices;
    const size_t total = (reset ? 0 : list.size()) + devices.size();
    if (total > size_t(kMaxDevices))
        return CMATRIX_ERR_LIMIT;
    if (reset)
        list.clear();
    list.insert(list.end(), devices.begin(), devices.end());
    for (size_t i = 0; i < list.size(); ++i)
        list[i].index = int32_t(i);
    return CMATRIX_OK;
}

const Scheme* SchemeBook::find(uint32_t id) const
{
    auto it = schemes_.find(id);
    return it == schemes_.end() ? nullptr : &it->second;
}

std::vector<SchemeInfo_t> SchemeBook::list() const
{
    std::vector<SchemeInfo_t> list;
    list.reserve(schemes_.size());
    for (const auto& [id, scheme] : schemes_)
        list.push_back(scheme.info);
    return list;
}

int SchemeBook::restore(std::vector<Scheme> schemes)
{
    schemes_.clear();
    int dropped = 0;
    for (Scheme& s : schemes) {
        const bool ok
            = checkInfo(s.info) == CMATRIX_OK && !schemes_.count(s.info.id) && schemes_.size() < size_t(kMaxSchemes);
        if (!ok) {
            ++dropped;
            continue;
        }
        const uint32_t id = s.info.id;
        schemes_[id].info = s.info;
        if (addDevices(id, s.devices, true) != CMATRIX_OK) {
            schemes_.erase(id);
            ++dropped;
        }
    }
    return dropped;
}

} // namespace vdec

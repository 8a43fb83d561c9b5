#include "ResolutionTable.h"

#include <QJsonArray>

namespace vdec {

namespace {

ScreenResolution_t toRecord(const ResolutionTable::Mode& mode, int32_t outputIndex)
{
    return ScreenResolution_t { mode.width, mode.height, mode.refreshRate, outputIndex };
}

QJsonObject modeToJson(const ResolutionTable::Mode& mode)
{
    return QJsonObject { { "width", mode.width }, { "height", mode.height }, { "refreshRate", mode.refreshRate } };
}

ScreenResolution_t modeFromJson(const QJsonObject& o)
{
    return ScreenResolution_t { o.value("width").toInt(), o.value("height").toInt(), o.value("refreshRate").toInt(),
        o.value("output").toInt(-1) };
}

} // namespace

bool ResolutionTable::isSupported(const ScreenResolution_t& r)
{
    for (const Mode& m : kModes) {
        if (m.width == r.width && m.height == r.height && m.refreshRate == r.refreshRate)
            return true;
    }
    return false;
}

int32_t ResolutionTable::set(const ScreenResolution_t& r, bool setAll, int32_t outputs)
{
    if (!isSupported(r))
        return CMATRIX_ERR_INVALID_PARAM;
    const Mode mode { r.width, r.height, r.refreshRate };
    if (setAll) {
        all_ = mode;
        outputs_.clear();
        return CMATRIX_OK;
    }
    if (r.outputIndex < 0 || r.outputIndex >= outputs)
        return CMATRIX_ERR_INVALID_PARAM;
    outputs_[r.outputIndex] = mode;
    return CMATRIX_OK;
}

int32_t ResolutionTable::get(int32_t outputIndex, int32_t outputs, ScreenResolution_t& out) const
{
    if (outputIndex == -1) {
        out = common();
        return CMATRIX_OK;
    }
    if (outputIndex < 0 || outputIndex >= outputs)
        return CMATRIX_ERR_INVALID_PARAM;
    const auto it = outputs_.find(outputIndex);
    out = toRecord(it == outputs_.end() ? all_ : it->second, outputIndex);
    return CMATRIX_OK;
}

ScreenResolution_t ResolutionTable::common() const
{
    return toRecord(all_, -1);
}

QJsonObject ResolutionTable::toJson() const
{
    QJsonArray own;
    for (const auto& [index, mode] : outputs_) {
        QJsonObject o = modeToJson(mode);
        o.insert("output", index);
        own.append(o);
    }
    return QJsonObject { { "all", modeToJson(all_) }, { "outputs", own } };
}

bool ResolutionTable::fromJson(const QJsonObject& o)
{
    ResolutionTable table;
    if (table.set(modeFromJson(o.value("all").toObject()), true, 0) != CMATRIX_OK)
        return false;
    for (const QJsonValue& value : o.value("outputs").toArray()) {
        // Outputs are checked against the grid when they are set; here only their range.
        if (table.set(modeFromJson(value.toObject()), false, INT32_MAX) != CMATRIX_OK)
            return false;
    }
    *this = table;
    return true;
}

} // namespace vdec

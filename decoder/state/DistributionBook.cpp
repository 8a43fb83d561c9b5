#include "DistributionBook.h"

#include "CMatrixSDK.h"

#include <QJsonObject>

#include <algorithm>

namespace vdec {

QString DistributionBook::urlOf(const QString& decoderIp, uint32_t id)
{
    return QStringLiteral("rtsp://%1:554/md/%2").arg(decoderIp).arg(id);
}

int32_t DistributionBook::start(
    const std::string& sourceName, int32_t channel, const QString& decoderIp, MediaDistribution& out)
{
    if (sourceName.empty() || sourceName.size() > size_t(kMaxNameBytes) || sourceName.find('\0') != std::string::npos)
        return CMATRIX_ERR_NAME;
    if (channel < 1)
        return CMATRIX_ERR_INVALID_PARAM;
    const QString name = QString::fromStdString(sourceName);
    for (const MediaDistribution& d : items_) {
        if (d.sourceName == name && d.channel == channel) {
            out = d;
            return CMATRIX_OK;
        }
    }
    if (items_.size() >= size_t(kMaxDistributions) || lastId_ == UINT32_MAX)
        return CMATRIX_ERR_LIMIT;
    MediaDistribution d;
    d.id = ++lastId_;
    d.sourceName = name;
    d.channel = channel;
    d.url = urlOf(decoderIp, d.id);
    items_.push_back(d);
    out = d;
    return CMATRIX_OK;
}

int32_t DistributionBook::stop(uint32_t id)
{
    const auto it = std::find_if(items_.begin(), items_.end(), [id](const MediaDistribution& d) { return d.id == id; });
    if (it == items_.end())
        return CMATRIX_ERR_MEDIA_NOT_FOUND;
    items_.erase(it);
    return CMATRIX_OK;
}

const MediaDistribution* DistributionBook::find(uint32_t id) const
{
    for (const MediaDistribution& d : items_) {
        if (d.id == id)
            return &d;
    }
    return nullptr;
}

MediaDistribution* DistributionBook::find(uint32_t id)
{
    return const_cast<MediaDistribution*>(static_cast<const DistributionBook*>(this)->find(id));
}

QJsonArray DistributionBook::toJson() const
{
    QJsonArray array;
    for (const MediaDistribution& d : items_) {
        array.append(QJsonObject {
            { "id", qint64(d.id) }, { "sourceName", d.sourceName }, { "channel", d.channel }, { "url", d.url } });
    }
    return array;
}

void DistributionBook::fromJson(const QJsonArray& array, uint32_t lastId)
{
    items_.clear();
    lastId_ = lastId;
    for (const QJsonValue& value : array) {
        const QJsonObject o = value.toObject();
        const qint64 id = o.value("id").toVariant().toLongLong();
        MediaDistribution d;
        d.sourceName = o.value("sourceName").toString();
        d.channel = o.value("channel").toInt();
        d.url = o.value("url").toString();
        const QByteArray name = d.sourceName.toUtf8();
        if (id <= 0 || id > qint64(UINT32_MAX) || name.isEmpty() || name.size() > kMaxNameBytes || d.channel < 1
            || d.url.isEmpty() || find(uint32_t(id)) || items_.size() >= size_t(kMaxDistributions))
            continue;
        d.id = uint32_t(id);
        lastId_ = std::max(lastId_, d.id);
        items_.push_back(d);
    }
}

} // namespace vdec

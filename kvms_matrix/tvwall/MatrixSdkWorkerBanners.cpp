// MatrixSdkWorker: the scrolling banner over the wall, and its mirror in "tvWallConfig.ini".
#include "MatrixSdkWorker.h"

#include "SdkCallLog.h"
#include "SdkText.h"
#include "TvWallIni.h"
#include "WallHandle.h"

#include <QtGlobal>

#include <cstring>
#include <memory>

namespace kvms_matrix {

namespace {

BannerInfo_t zeroBanner()
{
    BannerInfo_t record;
    std::memset(&record, 0, sizeof record);
    return record;
}

// Wider arithmetic: a decoder may report any int, and h * percent must not overflow.
int clampToInt(qint64 value)
{
    return int(qBound<qint64>(INT32_MIN, value, INT32_MAX));
}

BannerInfo_t recordOf(const MatrixBannerInfo& banner)
{
    BannerInfo_t record = zeroBanner();
    record.show = 1;
    SdkText::copy(record.message, sizeof record.message, banner.message);
    record.direction = banner.direction;
    record.speed = banner.speed;
    record.x = banner.x;
    record.y = banner.y;
    record.w = banner.w;
    record.h = banner.h;
    record.fontSize = clampToInt(qint64(banner.h) * banner.fontPercent / 100);
    record.fontColor = MatrixSdkWorker::transColorToUint(banner.fontColor);
    record.backColor = MatrixSdkWorker::transColorToUint(banner.backColor);
    return record;
}

TvWallIni::Banner mirrorOf(const MatrixBannerInfo& banner)
{
    TvWallIni::Banner ini;
    ini.message = banner.message;
    ini.direction = banner.direction;
    ini.speed = banner.speed;
    ini.fontPercent = banner.fontPercent;
    ini.fontColor = banner.fontColor;
    ini.backColor = banner.backColor;
    ini.x = banner.x;
    ini.y = banner.y;
    ini.w = banner.w;
    ini.h = banner.h;
    return ini;
}

} // namespace

quint32 MatrixSdkWorker::transColorToUint(const QColor& color)
{
    return (quint32(color.alpha() & 0xFF) << 24) | (quint32(color.red() & 0xFF) << 16)
        | (quint32(color.green() & 0xFF) << 8) | quint32(color.blue() & 0xFF);
}

QColor MatrixSdkWorker::transUintToColor(quint32 word)
{
    return QColor(int((word >> 16) & 0xFF), int((word >> 8) & 0xFF), int(word & 0xFF), int(word >> 24));
}

void MatrixSdkWorker::mirrorDecoderBanner(const BannerInfo_t& record)
{
    TvWallIni::Banner ini;
    ini.message = SdkText::read(record.message, sizeof record.message);
    ini.direction = record.direction;
    ini.speed = record.speed;
    // A banner of height 0 gives no percentage; the stored one is kept.
    const bool withPercent = record.h != 0;
    if (withPercent)
        ini.fontPercent = clampToInt(qint64(record.fontSize) * 100 / record.h);
    ini.fontColor = transUintToColor(record.fontColor);
    ini.backColor = transUintToColor(record.backColor);
    ini.x = record.x;
    ini.y = record.y;
    ini.w = record.show ? record.w : 0; // a width of 0 tells the forms that nothing is shown
    ini.h = record.h;
    TvWallIni::writeBanner(ini, withPercent);
}

int MatrixSdkWorker::hideMatrixBanner(QSharedPointer<CSharedHandle> handle)
{
    if (!WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const BannerInfo_t record = zeroBanner();
    const int ret = CMatrix_DisplayBanner(handle->handle(), &record);
    SdkCallLog::call("CMatrix_DisplayBanner", ret);
    if (ret == CMATRIX_OK)
        TvWallIni::zeroBannerRect();
    return ret;
}

MatrixBannerInfo MatrixSdkWorker::getBanner(QSharedPointer<CSharedHandle>)
{
    // The mirror, not the decoder: the forms read it on the GUI thread. Keys never written read
    // as 0 and an empty message; colours never written read as white text on black, so a form
    // never paints with an invalid colour.
    const TvWallIni::Banner ini = TvWallIni::readBanner();
    MatrixBannerInfo banner;
    banner.message = ini.message;
    banner.x = ini.x;
    banner.y = ini.y;
    banner.w = ini.w;
    banner.h = ini.h;
    banner.direction = ini.direction;
    banner.speed = ini.speed;
    banner.fontPercent = ini.fontPercent;
    banner.fontColor = ini.fontColor.isValid() ? ini.fontColor : QColor(Qt::white);
    banner.backColor = ini.backColor.isValid() ? ini.backColor : QColor(Qt::black);
    return banner;
}

void MatrixSdkWorker::doSetBanner(const WorkerTaskParam& task)
{
    const std::unique_ptr<MatrixBannerInfo> banner(static_cast<MatrixBannerInfo*>(task.userData));
    const MatrixBannerInfo sent = banner ? *banner : MatrixBannerInfo();
    if (!banner || !WallHandle::usable(*this, task.handle)) {
        emit signalSetBannerResult(CMATRIX_ERR_FAILED, sent);
        return;
    }
    const CMHANDLE handle = task.handle->handle();
    const BannerInfo_t record = recordOf(sent);
    SdkCallLog::Timer timer;
    const int ret = CMatrix_DisplayBanner(handle, &record);
    SdkCallLog::line(
        QStringLiteral("{ funcName = %1 , params { mHandle = %2  } , ret = %5  , time = %6  , Elapsed = %7 }")
            .arg(QStringLiteral("CMatrix_DisplayBanner"), SdkCallLog::pointer(handle), QString::number(ret),
                SdkCallLog::now(), timer.elapsed()));
    if (ret == CMATRIX_OK)
        TvWallIni::writeBanner(mirrorOf(sent));
    emit signalSetBannerResult(ret, sent);
}

void MatrixSdkWorker::doRemoveBanner(const WorkerTaskParam& task)
{
    if (!task.handle)
        return;
    emit signalRemoveBannerResult(hideMatrixBanner(task.handle));
}

} // namespace kvms_matrix

// vd-push: puts a picture in a sub-window of a decoder and a banner on its wall, as
// the module would, through the SDK. Handy to see the monitor page at work.

#include "PushOptions.h"
#include "TestCard.h"

#include "CMatrixSDK.h"
#include "KavFrame.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

bool check(const char* what, int rc)
{
    if (rc >= 0)
        return true;
    const char* text = CMatrix_GetErrorText(rc);
    fprintf(stderr, "vd-push: %s: %d (%s)\n", what, rc, text ? text : "unknown");
    return false;
}

bool ensureWindow(CMHANDLE h, const PushOptions& o)
{
    MatrixWindowStatus_t* windows = nullptr;
    const int count = CMatrix_WindowGet(h, &windows);
    if (!check("listing windows", count))
        return false;
    bool found = false;
    for (int i = 0; i < count; ++i)
        found = found || int(windows[i].window.id) == o.windowId;
    CMatrix_Free(h, windows);
    if (found)
        return true;
    MatrixWindow_t w {};
    w.id = uint32_t(o.windowId);
    w.floating = o.floating ? 1 : 0;
    w.x = o.rect.x();
    w.y = o.rect.y();
    w.w = o.rect.width();
    w.h = o.rect.height();
    return check("making the window", CMatrix_WindowAdd(h, &w, 1, false))
        && check("dividing it", CMatrix_WindowSetDivision(h, o.windowId, o.division));
}

bool bindPicture(CMHANDLE h, const PushOptions& o)
{
    DeviceInfo_t d {};
    d.subWindow = o.sub;
    std::snprintf(d.devId, sizeof d.devId, "pic_%d_%d", o.windowId, o.sub);
    std::strncpy(d.name, o.name.toUtf8().constData(), sizeof d.name - 1);
    d.protocol = 6; // a picture the decoder is given, not one it fetches
    d.channel = o.sub;
    d.mode = 2;
    return check("binding the picture source", CMatrix_WindowDeviceAdd(h, o.windowId, &d, 1, false));
}

bool pushPicture(CMHANDLE h, const PushOptions& o)
{
    QByteArray jpeg;
    if (o.picture.isEmpty()) {
        jpeg = TestCard::jpeg(o.name);
    } else {
        QFile file(o.picture);
        if (!file.open(QIODevice::ReadOnly)) {
            fprintf(stderr, "vd-push: cannot read %s\n", qPrintable(o.picture));
            return false;
        }
        jpeg = file.readAll();
    }
    const QSize size = o.picture.isEmpty() ? QSize(1280, 720) : QImageReader(o.picture).size();
    KavFrame frame {};
    frame.type = KAV_TYPE_KEY;
    frame.data = reinterpret_cast<const unsigned char*>(jpeg.constData());
    frame.size = uint32_t(jpeg.size());
    KavStreamInfo info {};
    info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    info.videoCodec = 4; // still picture
    info.frameRateNum = info.frameRateDen = 1;
    info.width = uint16_t(size.isValid() ? size.width() : 1280);
    info.height = uint16_t(size.isValid() ? size.height() : 720);
    std::vector<unsigned char> packed(size_t(std::max(0, KavCalcFrameSize(frame.type, frame.size))));
    const int length = KavPackFrame(&frame, &info, packed.data(), int(packed.size()));
    if (length <= 0) {
        fprintf(stderr, "vd-push: the picture does not fit a media frame\n");
        return false;
    }
    return check("showing the picture", CMatrix_DisplayFrame(h, o.windowId, o.sub, packed.data(), length));
}

bool setBanner(CMHANDLE h, const PushOptions& o)
{
    BannerInfo_t b {};
    b.show = o.hideBanner ? 0 : 1;
    std::strncpy(b.message, o.banner.toUtf8().constData(), sizeof b.message - 1);
    b.direction = 0;
    b.speed = 5;
    b.x = 0;
    b.y = 32768 - 3072;
    b.w = 32768;
    b.h = 3072;
    b.fontSize = 1800;
    b.fontColor = 0xffffffff;
    b.backColor = 0xe0b01818;
    return check("setting the banner", CMatrix_DisplayBanner(h, &b));
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    PushOptions o;
    QString error;
    if (!PushOptions::parse(app.arguments(), o, &error)) {
        fprintf(stderr, "vd-push: %s\n", qPrintable(error));
        return 2;
    }
    CMHANDLE h = CMatrix_Create();
    bool ok = check("logging in",
        CMatrix_Connect(h, o.address.toLatin1().constData(), o.port, o.user.toUtf8().constData(),
            o.password.toUtf8().constData(), 3000));
    if (ok && !o.grid.isEmpty())
        ok = check("setting the grid", CMatrix_SetMatrix(h, o.grid.width(), o.grid.height(), "Wall"));
    ok = ok && ensureWindow(h, o) && bindPicture(h, o) && pushPicture(h, o);
    if (ok && (!o.banner.isEmpty() || o.hideBanner))
        ok = setBanner(h, o);
    CMatrix_Destroy(h);
    if (ok)
        printf("vd-push: picture shown in window %d, sub-window %d\n", o.windowId, o.sub);
    return ok ? 0 : 1;
}

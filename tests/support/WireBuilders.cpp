#include "WireBuilders.h"

namespace kvmstest {

MatrixWindow_t window(uint32_t id, int32_t x, int32_t y, int32_t w, int32_t h, bool floating)
{
    MatrixWindow_t r {};
    r.id = id;
    r.floating = floating ? 1 : 0;
    r.x = x;
    r.y = y;
    r.w = w;
    r.h = h;
    return r;
}

DeviceInfo_t device(int32_t subWindow, const char* devId)
{
    DeviceInfo_t d {};
    d.subWindow = subWindow;
    setText(d.devId, devId);
    setText(d.name, devId);
    d.channel = subWindow;
    d.protocol = 1;
    setText(d.ip, "127.0.0.9");
    d.mode = 2;
    return d;
}

} // namespace kvmstest

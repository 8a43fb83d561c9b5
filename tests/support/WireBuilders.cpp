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

} // namespace kvmstest

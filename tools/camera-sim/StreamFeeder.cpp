#include "StreamFeeder.h"

#include "AccessUnits.h"
#include "media/CameraStamp.h"

#include <gst/app/gstappsrc.h>

#include <cstring>
#include <vector>

StreamFeeder::StreamFeeder(const AccessUnits& clip, GstElement* appsrc, bool corrupt)
    : clip_(clip)
    , appsrc_(GST_ELEMENT(gst_object_ref(appsrc)))
    , corrupt_(corrupt)
{
}

StreamFeeder::~StreamFeeder()
{
    gst_object_unref(appsrc_);
}

void StreamFeeder::pushDue(int64_t nowUs)
{
    // Every stream sends on one 40 ms grid, so one wake-up of the ticker serves them all.
    if (dueUs_ < 0 || nowUs - dueUs_ > 10 * kFrameUs) // new, or stalled: from now on, no burst
        dueUs_ = nowUs - nowUs % kFrameUs;
    while (dueUs_ <= nowUs) {
        dueUs_ += kFrameUs;
        if (gst_app_src_push_buffer(GST_APP_SRC(appsrc_), nextBuffer()) != GST_FLOW_OK)
            return; // not playing (yet, or any more)
    }
}

GstBuffer* StreamFeeder::nextBuffer()
{
    const AccessUnits::Unit& unit = clip_.units()[index_];
    index_ = (index_ + 1) % clip_.units().size();
    const std::vector<uint8_t> stamp = vdec::CameraStamp::encode({ int64_t(g_get_real_time()), sent_++ });
    const uint8_t* picture = clip_.data(unit);
    size_t pictureSize = unit.size;
    std::vector<uint8_t> noise;
    if (corrupt_ && !unit.key) {
        // Every third picture cut short, every fifth replaced by noise behind a start
        // code: what a broken camera or a bad link delivers.
        if (sent_ % 3 == 0)
            pictureSize = std::max<size_t>(8, pictureSize / 3);
        if (sent_ % 5 == 0) {
            noise.resize(std::max<size_t>(64, pictureSize / 2));
            for (uint8_t& b : noise)
                b = uint8_t(random_());
            noise[0] = 0, noise[1] = 0, noise[2] = 0, noise[3] = 1;
            picture = noise.data();
            pictureSize = noise.size();
        }
    }
    // The delimiter stays first; the stamp goes right behind it.
    const size_t delimiter = std::min<size_t>(pictureSize, picture[2] == 1 ? 5 : 6);
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, pictureSize + stamp.size(), nullptr);
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_WRITE);
    std::memcpy(map.data, picture, delimiter);
    std::memcpy(map.data + delimiter, stamp.data(), stamp.size());
    std::memcpy(map.data + delimiter + stamp.size(), picture + delimiter, pictureSize - delimiter);
    gst_buffer_unmap(buffer, &map);
    return buffer;
}

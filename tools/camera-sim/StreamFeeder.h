#pragma once

#include <gst/gst.h>

#include <cstdint>
#include <random>

class AccessUnits;

// Pushes one clip's pictures, over and over, into the source of one served stream at
// 25 a second, each behind a stamp with the time it is sent (see CameraStamp). The
// clip's bytes are only copied, never re-encoded. A corrupt feeder damages some
// pictures on purpose: cut short, or replaced with noise.
class StreamFeeder {
public:
    static constexpr int64_t kFrameUs = 40000;

    StreamFeeder(const AccessUnits& clip, GstElement* appsrc, bool corrupt);
    ~StreamFeeder();
    StreamFeeder(const StreamFeeder&) = delete;
    StreamFeeder& operator=(const StreamFeeder&) = delete;

    // Sends every picture due by `nowUs` (monotonic); after a stall it skips ahead
    // rather than bursting.
    void pushDue(int64_t nowUs);

private:
    GstBuffer* nextBuffer();

    const AccessUnits& clip_;
    GstElement* appsrc_;
    const bool corrupt_;
    size_t index_ = 0;
    uint32_t sent_ = 0;
    int64_t dueUs_ = -1;
    std::mt19937 random_ { 1234 };
};

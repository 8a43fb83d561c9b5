#pragma once

#include <QImage>
#include <QSize>

#include <memory>

namespace kvms_matrix {

// The root window of an X11 display read through MIT-SHM into one shared segment. Only built
// when xcb and xcb-shm are available; open() fails everywhere else.
class SharedMemoryGrab {
public:
    ~SharedMemoryGrab();

    // Connects to the display the toolkit uses and maps a segment for `size`; null when the
    // display has no MIT-SHM, a pixel layout other than 32-bit BGRX, a root smaller than `size`,
    // or refuses the segment.
    static std::unique_ptr<SharedMemoryGrab> open(QSize size);

    QSize size() const { return m_size; }
    // The root's top-left `size()` pixels as RGB32 over the shared segment; false on failure.
    bool grab(QImage& image);

private:
    SharedMemoryGrab() = default;
    struct Native;
    std::unique_ptr<Native> m_native;
    QSize m_size;
};

} // namespace kvms_matrix

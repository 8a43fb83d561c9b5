#pragma once

#include <QImage>

#include <memory>

namespace kvms_matrix {

class SharedMemoryGrab;

// Takes the whole primary screen (origin 0,0, its full width and height) as an image, for the
// capture thread. On an X11 display with MIT-SHM the server writes the picture straight into
// memory shared with us, and the image wraps that memory; elsewhere, or when shared memory is
// refused, the toolkit's own screen grab is used. Create, use and destroy it on one thread.
class ScreenGrabber {
public:
    // `allowSharedMemory` false always takes the toolkit's path (for comparisons).
    explicit ScreenGrabber(bool allowSharedMemory = true);
    ~ScreenGrabber();
    ScreenGrabber(const ScreenGrabber&) = delete;
    ScreenGrabber& operator=(const ScreenGrabber&) = delete;

    // Null when there is no screen. A shared-memory image is valid until the next grab() and
    // may be drawn on.
    QImage grab();
    // Whether the latest grab went through shared memory.
    bool usedSharedMemory() const { return m_usedSharedMemory; }

private:
    bool m_allowSharedMemory;
    bool m_triedSharedMemory = false;
    bool m_usedSharedMemory = false;
    std::unique_ptr<SharedMemoryGrab> m_shm;
};

} // namespace kvms_matrix

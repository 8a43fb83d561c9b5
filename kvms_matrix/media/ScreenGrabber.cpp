#include "ScreenGrabber.h"

#include "SharedMemoryGrab.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

namespace kvms_matrix {

ScreenGrabber::ScreenGrabber(bool allowSharedMemory)
    : m_allowSharedMemory(allowSharedMemory)
{
}

ScreenGrabber::~ScreenGrabber() = default;

QImage ScreenGrabber::grab()
{
    m_usedSharedMemory = false;
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {};
    const QSize size = screen->geometry().size();
    if (m_shm && m_shm->size() != size) {
        m_shm.reset(); // the screen changed size: map anew
        m_triedSharedMemory = false;
    }
    if (m_allowSharedMemory && !m_triedSharedMemory) {
        m_triedSharedMemory = true;
        m_shm = SharedMemoryGrab::open(size);
    }
    if (m_shm) {
        QImage image;
        if (m_shm->grab(image)) {
            m_usedSharedMemory = true;
            return image;
        }
        m_shm.reset(); // refused once: the toolkit from now on
    }
    return screen->grabWindow(0, 0, 0, size.width(), size.height()).toImage();
}

} // namespace kvms_matrix

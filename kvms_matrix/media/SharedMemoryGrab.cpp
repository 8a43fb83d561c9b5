#include "SharedMemoryGrab.h"

#include <QGuiApplication>

#ifdef KVMS_HAVE_XCB_SHM
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <cstdlib>
#endif

namespace kvms_matrix {

#ifdef KVMS_HAVE_XCB_SHM

// A connection of our own: the toolkit's serves the GUI thread, and a grab must not wait for it.
struct SharedMemoryGrab::Native {
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = 0;
    xcb_shm_seg_t segment = 0;
    int shmId = -1;
    uchar* memory = nullptr;

    ~Native()
    {
        if (connection) {
            if (segment) {
                xcb_shm_detach(connection, segment);
                xcb_flush(connection);
            }
            xcb_disconnect(connection);
        }
        if (memory)
            shmdt(memory);
        if (shmId >= 0)
            shmctl(shmId, IPC_RMID, nullptr);
    }
};

namespace {

const xcb_screen_t* screenOf(const xcb_setup_t* setup, int number)
{
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(setup);
    for (int i = 0; i < number && it.rem; ++i)
        xcb_screen_next(&it);
    return it.rem ? it.data : nullptr;
}

// Pixels the way RGB32 images hold them: 32 bits each, 0x00RRGGBB in host byte order.
bool isHostBgrx(const xcb_setup_t* setup, const xcb_screen_t* screen)
{
    const int hostOrder = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
    if (setup->image_byte_order != hostOrder)
        return false;
    bool wide = false;
    for (auto f = xcb_setup_pixmap_formats_iterator(setup); f.rem; xcb_format_next(&f)) {
        if (f.data->depth == screen->root_depth)
            wide = f.data->bits_per_pixel == 32 && f.data->scanline_pad == 32;
    }
    if (!wide)
        return false;
    for (auto d = xcb_screen_allowed_depths_iterator(screen); d.rem; xcb_depth_next(&d)) {
        for (auto v = xcb_depth_visuals_iterator(d.data); v.rem; xcb_visualtype_next(&v)) {
            if (v.data->visual_id == screen->root_visual)
                return v.data->red_mask == 0xff0000 && v.data->green_mask == 0xff00 && v.data->blue_mask == 0xff;
        }
    }
    return false;
}

} // namespace

std::unique_ptr<SharedMemoryGrab> SharedMemoryGrab::open(QSize size)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb") || size.isEmpty())
        return nullptr;
    auto native = std::make_unique<Native>();
    int screenNumber = 0;
    // DISPLAY names the server, as it does for the toolkit's own connection.
    native->connection = xcb_connect(nullptr, &screenNumber);
    xcb_connection_t* c = native->connection;
    if (xcb_connection_has_error(c))
        return nullptr;
    const xcb_setup_t* setup = xcb_get_setup(c);
    const xcb_screen_t* screen = screenOf(setup, screenNumber);
    if (!screen || screen->width_in_pixels < size.width() || screen->height_in_pixels < size.height()
        || !isHostBgrx(setup, screen))
        return nullptr;
    const xcb_query_extension_reply_t* shm = xcb_get_extension_data(c, &xcb_shm_id);
    if (!shm || !shm->present)
        return nullptr;
    native->root = screen->root;

    native->shmId = shmget(IPC_PRIVATE, size_t(size.width()) * size_t(size.height()) * 4, IPC_CREAT | 0600);
    if (native->shmId < 0)
        return nullptr;
    void* memory = shmat(native->shmId, nullptr, 0);
    if (memory == reinterpret_cast<void*>(-1))
        return nullptr;
    native->memory = static_cast<uchar*>(memory);
    const xcb_shm_seg_t segment = xcb_generate_id(c);
    xcb_generic_error_t* error = xcb_request_check(c, xcb_shm_attach_checked(c, segment, native->shmId, 0));
    // Both sides hold it now (or the server never will): it goes when the last one lets go.
    shmctl(native->shmId, IPC_RMID, nullptr);
    native->shmId = -1;
    if (error) {
        std::free(error);
        return nullptr;
    }
    native->segment = segment;

    std::unique_ptr<SharedMemoryGrab> grab(new SharedMemoryGrab);
    grab->m_native = std::move(native);
    grab->m_size = size;
    return grab;
}

bool SharedMemoryGrab::grab(QImage& image)
{
    xcb_connection_t* c = m_native->connection;
    const xcb_shm_get_image_cookie_t cookie = xcb_shm_get_image(c, m_native->root, 0, 0, uint16_t(m_size.width()),
        uint16_t(m_size.height()), ~0u, XCB_IMAGE_FORMAT_Z_PIXMAP, m_native->segment, 0);
    xcb_generic_error_t* error = nullptr;
    xcb_shm_get_image_reply_t* reply = xcb_shm_get_image_reply(c, cookie, &error);
    std::free(error);
    if (!reply)
        return false;
    std::free(reply);
    image = QImage(m_native->memory, m_size.width(), m_size.height(), m_size.width() * 4, QImage::Format_RGB32);
    return true;
}

#else

struct SharedMemoryGrab::Native { };

std::unique_ptr<SharedMemoryGrab> SharedMemoryGrab::open(QSize)
{
    return nullptr;
}

bool SharedMemoryGrab::grab(QImage&)
{
    return false;
}

#endif

SharedMemoryGrab::~SharedMemoryGrab() = default;

} // namespace kvms_matrix

#include "Notifier.h"

#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vdec {

Notifier::Notifier()
    : fd_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
}

void Notifier::notify() const
{
    const uint64_t one = 1;
    [[maybe_unused]] ssize_t n = ::write(fd_.fd(), &one, sizeof one);
}

void Notifier::drain() const
{
    uint64_t value = 0;
    [[maybe_unused]] ssize_t n = ::read(fd_.fd(), &value, sizeof value);
}

} // namespace vdec

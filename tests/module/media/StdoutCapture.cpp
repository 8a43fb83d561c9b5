#include "StdoutCapture.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

StdoutCapture::StdoutCapture()
{
    std::fflush(stdout);
    if (::pipe(pipe_) != 0)
        return;
    ::fcntl(pipe_[0], F_SETFL, O_NONBLOCK);
    savedFd_ = ::dup(STDOUT_FILENO);
    if (savedFd_ >= 0)
        ::dup2(pipe_[1], STDOUT_FILENO);
}

StdoutCapture::~StdoutCapture()
{
    restore();
    for (int& fd : pipe_) {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
}

QByteArray StdoutCapture::take()
{
    restore();
    QByteArray text;
    char chunk[256];
    ssize_t n;
    while (pipe_[0] >= 0 && (n = ::read(pipe_[0], chunk, sizeof chunk)) > 0)
        text.append(chunk, int(n));
    return text;
}

void StdoutCapture::restore()
{
    if (savedFd_ < 0)
        return;
    std::fflush(stdout);
    ::dup2(savedFd_, STDOUT_FILENO);
    ::close(savedFd_);
    savedFd_ = -1;
}

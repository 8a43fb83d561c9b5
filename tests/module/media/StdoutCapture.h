#pragma once

#include <QByteArray>

// Catches what is written to standard output (file descriptor 1, stdio flushed)
// between construction and take(). Meant for short texts: the pipe is read at the end.
class StdoutCapture {
public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    bool ok() const { return savedFd_ >= 0; }
    QByteArray take();

private:
    void restore();

    int pipe_[2] = { -1, -1 };
    int savedFd_ = -1;
};

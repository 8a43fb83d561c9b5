#include "LocalFile.h"

#include "CMatrixSDK.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cmatrix::sdk {

namespace {

class Descriptor {
public:
    explicit Descriptor(int fd)
        : fd_(fd)
    {
    }
    ~Descriptor()
    {
        if (fd_ >= 0)
            ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }
    int release()
    {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd);
    }

private:
    int fd_;
};

} // namespace

int LocalFile::read(const std::string& path, size_t limit, std::vector<uint8_t>& out)
{
    if (path.empty())
        return CMATRIX_ERR_INVALID_PARAM;
    Descriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0)
        return errno == ENOENT ? CMATRIX_ERR_FILE_NOT_FOUND : CMATRIX_ERR_FILE_IO;
    struct stat info { };
    if (::fstat(fd.get(), &info) != 0 || !S_ISREG(info.st_mode))
        return CMATRIX_ERR_FILE_IO;
    if (uint64_t(info.st_size) > limit)
        return CMATRIX_ERR_TOO_LARGE;
    std::vector<uint8_t> bytes(size_t(info.st_size));
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(fd.get(), bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return CMATRIX_ERR_FILE_IO; // shrank or failed while being read
        done += size_t(n);
    }
    out = std::move(bytes);
    return CMATRIX_OK;
}

int LocalFile::write(const std::string& path, const std::vector<uint8_t>& bytes)
{
    if (path.empty())
        return CMATRIX_ERR_INVALID_PARAM;
    const std::string temporary = path + ".part";
    Descriptor fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (fd.get() < 0)
        return CMATRIX_ERR_FILE_IO;
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd.get(), bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            ::unlink(temporary.c_str());
            return CMATRIX_ERR_FILE_IO;
        }
        done += size_t(n);
    }
    if (fd.release() != 0 || std::rename(temporary.c_str(), path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return CMATRIX_ERR_FILE_IO;
    }
    return CMATRIX_OK;
}

std::string LocalFile::baseName(const std::string& path)
{
    const size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace cmatrix::sdk

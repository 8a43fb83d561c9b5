#include "IngestRig.h"

#include "core/VirtualDecoder.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <sys/resource.h>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double cpuSeconds()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace

IngestRig::IngestRig(bool decodeAtShownSize, int pictureIntervalMs)
{
    vdec::DecoderConfig config;
    config.address = QStringLiteral("127.0.0.99");
    config.stateDir = dir_.path();
    config.httpPort = -1;
    config.decodeAtShownSize = decodeAtShownSize;
    config.pictureIntervalMs = pictureIntervalMs;
    decoder_ = std::make_unique<vdec::VirtualDecoder>(config);
    if (!decoder_->start(&error_) || !setUp())
        streams_.clear();
}

IngestRig::~IngestRig()
{
    for (CMMDHANDLE md : streams_)
        CMatrix_StopMediaDistribute(md);
    if (handle_)
        CMatrix_Destroy(handle_);
    decoder_->stop();
}

bool IngestRig::setUp()
{
    handle_ = CMatrix_Create();
    if (CMatrix_Connect(handle_, "127.0.0.99", decoder_->port(), "admin", "admin123", 3000) != CMATRIX_OK) {
        error_ = QStringLiteral("cannot log in");
        return false;
    }
    const MatrixWindow_t window { 1, 0, {}, 0, 0, 32768, 32768 };
    if (CMatrix_SetMatrix(handle_, 2, 2, "Bench") != CMATRIX_OK || CMatrix_WindowAdd(handle_, &window, 1, true) != 0
        || CMatrix_WindowSetDivision(handle_, 1, kStreams) != CMATRIX_OK) {
        error_ = QStringLiteral("cannot lay out the wall");
        return false;
    }
    std::vector<DeviceInfo_t> sources(kStreams);
    for (int i = 0; i < kStreams; ++i) {
        char url[512] = {};
        const QByteArray name = QStringLiteral("cap_%1").arg(i + 1, 2, 10, QLatin1Char('0')).toLatin1();
        const CMMDHANDLE md = CMatrix_StartMediaDistribute(handle_, name.constData(), i + 1, url, sizeof url);
        if (!md) {
            error_ = QStringLiteral("cannot start distribution %1").arg(i + 1);
            return false;
        }
        streams_.push_back(md);
        DeviceInfo_t& d = sources[size_t(i)];
        d.subWindow = i + 1;
        std::strncpy(d.devId, name.constData(), sizeof d.devId - 1);
        std::strncpy(d.mainUrl, url, sizeof d.mainUrl - 1);
        d.protocol = 7;
        d.channel = i + 1;
    }
    if (CMatrix_WindowDeviceAdd(handle_, 1, sources.data(), kStreams, true) != CMATRIX_OK) {
        error_ = QStringLiteral("cannot bind the sources");
        return false;
    }
    return true;
}

quint64 IngestRig::decodedSoFar() const
{
    quint64 decoded = 0;
    for (const auto& [key, media] : decoder_->snapshot().media)
        decoded += media.decoded;
    return decoded;
}

IngestRig::Result IngestRig::run(const std::vector<uint8_t>& frame, double fps, double seconds)
{
    Result result;
    if (streams_.size() != size_t(kStreams))
        return result;
    std::atomic<int> frames { 0 }, failures { 0 }, late { 0 };
    const quint64 decodedBefore = decodedSoFar();
    const double cpuBefore = cpuSeconds();
    const Clock::time_point start = Clock::now();
    const Clock::time_point end
        = start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    const auto period = fps > 0 ? std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / fps))
                                : Clock::duration::zero();
    std::vector<std::thread> senders;
    for (int i = 0; i < kStreams; ++i) {
        senders.emplace_back([&, md = streams_[size_t(i)], i] {
            // Senders start spread over one period, as independent sources would. A
            // sender that falls a period behind skips ahead, as a camera does not wait.
            Clock::time_point due = start + period * i / kStreams;
            while (Clock::now() < end) {
                std::this_thread::sleep_until(due);
                const int rc = CMatrix_SendMediaFrame(md, frame.data(), int(frame.size()));
                ++(rc == CMATRIX_OK ? frames : failures);
                due += period;
                const Clock::time_point now = Clock::now();
                if (period > Clock::duration::zero() && now > due + period) {
                    late += int((now - due) / period);
                    due = now;
                }
            }
        });
    }
    for (std::thread& t : senders)
        t.join();
    result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    result.cpuSeconds = cpuSeconds() - cpuBefore;
    result.frames = frames;
    result.failures = failures;
    result.late = late;
    result.decoded = decodedSoFar() - decodedBefore;
    return result;
}

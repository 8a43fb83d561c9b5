// Round trip of a small control call through the SDK on loopback, against a raw TCP
// ping-pong of the same number of bytes (32 out, 20 back); the aim is to stay within
// twice the raw figure. On a virtual machine a wake-up on another core can cost more
// than the whole exchange, and where the scheduler puts the threads decides the
// figures; `taskset -c 0` pins everything to one core and shows the SDK's own cost.

#include "CMatrixSDK.h"
#include "LoopbackServer.h"
#include "Message.h"
#include "MessageStream.h"
#include "Messages.h"

#include <benchmark/benchmark.h>

#include <sys/socket.h>
#include <unistd.h>
#include <vector>

using namespace cmatrix::wire;

namespace {

constexpr size_t kRequestSize = WireHeader::kSize + 12; // WindowSetFullScreen: three int32
constexpr size_t kAnswerSize = WireHeader::kSize; // status only

// The least a decoder can be: answers every request at once, status 0.
void serveAsDecoder(int fd)
{
    MessageStream stream;
    Message message;
    std::vector<uint8_t> buffer(64 * 1024);
    for (;;) {
        const ssize_t n = ::recv(fd, buffer.data(), buffer.size(), 0);
        if (n <= 0)
            return;
        stream.append(buffer.data(), size_t(n));
        MessageStream::Status status;
        while ((status = stream.next(message)) == MessageStream::Status::Message) {
            if (message.type() == uint16_t(MessageType::Heartbeat))
                continue;
            const std::vector<uint8_t> answer = message.type() == uint16_t(MessageType::GetMatrix)
                ? Message::encode(
                    responseOf(MessageType::GetMatrix), message.header.requestId, 0, MatrixGeometry { 4, 3, "wall" })
                : Message::encode(uint16_t(message.type() | kResponseFlag), message.header.requestId, 0, Empty {});
            if (!LoopbackServer::writeAll(fd, answer.data(), answer.size()))
                return;
        }
        if (status == MessageStream::Status::Error)
            return;
    }
}

void serveAsEcho(int fd)
{
    uint8_t request[kRequestSize];
    const uint8_t answer[kAnswerSize] = {};
    while (LoopbackServer::readExactly(fd, request, sizeof request))
        if (!LoopbackServer::writeAll(fd, answer, sizeof answer))
            return;
}

void BM_RawTcpRoundTrip(benchmark::State& state)
{
    LoopbackServer server(serveAsEcho);
    const int fd = LoopbackServer::connectTo(server.port());
    if (fd < 0) {
        state.SkipWithError("connect failed");
        return;
    }
    uint8_t request[kRequestSize] = {};
    uint8_t answer[kAnswerSize];
    for (auto _ : state) {
        if (!LoopbackServer::writeAll(fd, request, sizeof request)
            || !LoopbackServer::readExactly(fd, answer, sizeof answer)) {
            state.SkipWithError("echo failed");
            break;
        }
    }
    ::close(fd);
}

template <class Call> void sdkRoundTrip(benchmark::State& state, Call call)
{
    LoopbackServer server(serveAsDecoder);
    CMHANDLE handle = CMatrix_Create();
    if (CMatrix_Connect(handle, "127.0.0.1", server.port(), "admin", "admin", 3000) != CMATRIX_OK) {
        state.SkipWithError("connect failed");
        CMatrix_Destroy(handle);
        return;
    }
    for (auto _ : state) {
        if (call(handle) != CMATRIX_OK) {
            state.SkipWithError("call failed");
            break;
        }
    }
    CMatrix_Destroy(handle);
}

void BM_SdkSetFullScreen(benchmark::State& state)
{
    sdkRoundTrip(state, [](CMHANDLE h) { return CMatrix_WindowSetFullScreen(h, 1, 1, 1); });
}

void BM_SdkGetMatrix(benchmark::State& state)
{
    sdkRoundTrip(state, [](CMHANDLE h) {
        int cols = 0, rows = 0;
        char name[32];
        return CMatrix_GetMatrix(h, &cols, &rows, name, sizeof name);
    });
}

} // namespace

// Waiting on the network is the point: real time, not CPU time.
BENCHMARK(BM_RawTcpRoundTrip)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SdkSetFullScreen)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SdkGetMatrix)->UseRealTime()->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();

#include "DiscoveryRound.h"

#include "DiscoveryExchange.h"
#include "Messages.h"

#include <algorithm>
#include <cstring>

namespace cmatrix::sdk {

using wire::MessageType;

namespace {

template <size_t N> bool terminated(const char (&text)[N])
{
    return std::memchr(text, '\0', N) != nullptr;
}

// A descriptor whose texts would run off their fields is not passed on: the caller
// reads them as C strings.
bool wellFormed(const DeviceInfo_t& d)
{
    return terminated(d.devId) && terminated(d.name) && terminated(d.ip) && terminated(d.mainUrl)
        && terminated(d.subUrl) && terminated(d.userName) && terminated(d.password);
}

} // namespace

// The round threads still running, joined once they are done, or all of them when
// the library is unloaded.
struct DiscoveryRound::Threads {
    std::mutex mutex;
    std::vector<std::thread> running;
    std::vector<std::thread::id> done;
    bool closing = false;

    ~Threads()
    {
        for (;;) {
            std::vector<std::thread> left;
            {
                std::lock_guard<std::mutex> lock(mutex);
                closing = true;
                left.swap(running);
            }
            if (left.empty())
                return;
            for (std::thread& t : left) {
                if (t.get_id() == std::this_thread::get_id())
                    t.detach();
                else
                    t.join();
            }
        }
    }

    // Joins finished threads; the caller holds the mutex. A thread that is still in its
    // last callback (the one starting this round, say) is not marked done yet.
    void reap()
    {
        for (const std::thread::id id : done) {
            auto it
                = std::find_if(running.begin(), running.end(), [id](const std::thread& t) { return t.get_id() == id; });
            if (it != running.end()) {
                it->join();
                running.erase(it);
            }
        }
        done.clear();
    }
};

DiscoveryRound::Threads& DiscoveryRound::threads()
{
    static Threads instance;
    return instance;
}

int DiscoveryRound::start(int waitCentis, int probes, Discovery_SearchCallback callback, void* user)
{
    if (!callback || waitCentis <= 0 || waitCentis > kMaxWaitCentis || probes <= 0 || probes > kMaxProbes)
        return CMATRIX_ERR_INVALID_PARAM;
    Threads& t = threads();
    std::lock_guard<std::mutex> lock(t.mutex);
    if (t.closing)
        return CMATRIX_ERR_FAILED;
    t.reap();
    t.running.emplace_back([=] {
        run(waitCentis, probes, callback, user);
        Threads& all = threads();
        std::lock_guard<std::mutex> lock(all.mutex);
        all.done.push_back(std::this_thread::get_id());
    });
    return CMATRIX_OK;
}

void DiscoveryRound::run(int waitCentis, int probes, Discovery_SearchCallback callback, void* user)
{
    const Clock::time_point begin = Clock::now();
    const auto length = std::chrono::milliseconds(waitCentis * 10);
    const Clock::time_point end = begin + length;
    try {
        DiscoveryExchange exchange(MessageType::DiscoveryProbe, currentDiscoveryTargets());
        int sent = 0;
        Clock::time_point nextProbe = begin;
        wire::Message reply;
        while (exchange.isOpen() && Clock::now() < end) {
            if (sent < probes && Clock::now() >= nextProbe) {
                exchange.send(wire::Empty {});
                ++sent;
                nextProbe = begin + length * sent / probes;
            }
            const Clock::time_point until = sent < probes ? std::min(nextProbe, end) : end;
            while (exchange.next(reply, until)) {
                wire::DiscoveryAnswer answer;
                if (reply.header.status == CMATRIX_OK && reply.decode(answer) && wellFormed(answer.device))
                    callback(false, &answer.device, user);
            }
        }
        // Even a round that could not open its socket lasts its time, so a caller that
        // restarts rounds from the callback does not spin.
        std::this_thread::sleep_until(end);
    } catch (...) {
        // No exception leaves the SDK; the round still ends as promised.
    }
    callback(true, nullptr, user);
}

} // namespace cmatrix::sdk

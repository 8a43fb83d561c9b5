#include "FaultPlan.h"

#include "ByteOrder.h"
#include "WireHeader.h"

namespace vdec {

using cmatrix::wire::WireHeader;

void FaultPlan::failNext(Type type, int32_t code, int times)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (times == 0)
        failures_.erase(type);
    else
        failures_[type] = { code, times };
}

void FaultPlan::neverAnswer(Type type, bool on)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (on)
        swallowed_.insert(type);
    else
        swallowed_.erase(type);
}

void FaultPlan::answerLate(Type type, int delayMs)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (delayMs > 0)
        delays_[type] = delayMs;
    else
        delays_.erase(type);
}

void FaultPlan::dropConnectionAfter(int n)
{
    std::lock_guard<std::mutex> lock(mutex_);
    dropAfter_ = n;
}

void FaultPlan::answerNextWith(Type type, std::vector<uint8_t> payload)
{
    std::lock_guard<std::mutex> lock(mutex_);
    payloads_[type] = std::move(payload);
}

void FaultPlan::garbleNextAnswer(Garbage kind, std::optional<Type> type)
{
    std::lock_guard<std::mutex> lock(mutex_);
    garbage_ = std::make_pair(kind, type);
}

void FaultPlan::answerHostile(uint32_t seed, int answers)
{
    std::lock_guard<std::mutex> lock(mutex_);
    hostile_.emplace(seed);
    hostileLeft_ = answers;
}

int FaultPlan::hostileAnswersLeft() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return hostileLeft_;
}

void FaultPlan::muteHeartbeats(bool on)
{
    std::lock_guard<std::mutex> lock(mutex_);
    heartbeatsMuted_ = on;
}

void FaultPlan::clear()
{
    std::lock_guard<std::mutex> lock(mutex_);
    failures_.clear();
    swallowed_.clear();
    payloads_.clear();
    delays_.clear();
    dropAfter_ = -1;
    garbage_.reset();
    heartbeatsMuted_ = false;
    hostile_.reset();
    hostileLeft_ = 0;
}

bool FaultPlan::heartbeatsMuted() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return heartbeatsMuted_;
}

FaultPlan::Decision FaultPlan::onRequest(Type type)
{
    std::lock_guard<std::mutex> lock(mutex_);
    Decision d;
    if (dropAfter_ == 0) {
        dropAfter_ = -1;
        d.close = true;
        return d;
    }
    if (dropAfter_ > 0)
        --dropAfter_;
    if (swallowed_.count(type)) {
        d.swallow = true;
        return d;
    }
    auto failure = failures_.find(type);
    if (failure != failures_.end()) {
        d.failWith = failure->second.first;
        if (failure->second.second > 0 && --failure->second.second == 0)
            failures_.erase(failure);
    }
    auto payload = payloads_.find(type);
    if (payload != payloads_.end() && !d.failWith) {
        d.payload = std::move(payload->second);
        payloads_.erase(payload);
    }
    if (hostile_ && hostileLeft_ > 0 && !d.failWith && !d.payload) {
        if ((d.payload = hostile_->answer(type)))
            --hostileLeft_;
    }
    if (garbage_ && (!garbage_->second || *garbage_->second == type)) {
        d.garbage = garbage_->first;
        garbage_.reset();
    }
    auto delay = delays_.find(type);
    if (delay != delays_.end())
        d.delayMs = delay->second;
    return d;
}

std::vector<uint8_t> FaultPlan::garble(Garbage kind, const std::vector<uint8_t>& answer)
{
    std::vector<uint8_t> out = answer;
    if (out.size() < WireHeader::kSize)
        out.resize(WireHeader::kSize);
    uint8_t* header = out.data();
    switch (kind) {
    case Garbage::BadMagic:
        cmatrix::wire::putBe32(header, 0xDEADBEEF);
        break;
    case Garbage::BadVersion:
        cmatrix::wire::putBe16(header + 4, WireHeader::kVersion + 1);
        break;
    case Garbage::Oversized:
        out.resize(WireHeader::kSize);
        cmatrix::wire::putBe32(out.data() + 16, WireHeader::kMaxPayload + 1);
        break;
    case Garbage::MalformedPayload:
        if (out.size() > WireHeader::kSize)
            out.pop_back();
        else
            out.push_back(0xEE);
        cmatrix::wire::putBe32(out.data() + 16, uint32_t(out.size() - WireHeader::kSize));
        break;
    case Garbage::WrongRequestId:
        cmatrix::wire::putBe32(header + 8, cmatrix::wire::getBe32(header + 8) ^ 0x40000000u);
        break;
    }
    return out;
}

} // namespace vdec

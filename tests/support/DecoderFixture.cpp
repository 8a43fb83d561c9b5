#include "DecoderFixture.h"

#include "LoopbackPool.h"
#include "TestTimeout.h"

#include <QtDebug>

namespace kvmstest {

DecoderFixture::~DecoderFixture()
{
    cleanup();
}

vdec::VirtualDecoder* DecoderFixture::startDecoder(int n, const Tweak& tweak)
{
    auto dir = std::make_unique<QTemporaryDir>();
    if (!dir->isValid()) {
        qWarning() << "no temporary directory:" << dir->errorString();
        return nullptr;
    }
    if (n == 0) {
        // The fixture's own claims come back after each cleanup, so a test class needs only as
        // many addresses as one test starts decoders.
        if (claimedInUse_ == claimed_.size())
            claimed_.push_back(LoopbackPool::claimHost());
        n = claimed_[claimedInUse_];
        if (n != 0)
            ++claimedInUse_;
        else
            claimed_.pop_back();
    }
    if (n == 0) {
        qWarning() << "no free loopback address";
        return nullptr;
    }
    vdec::DecoderConfig config;
    config.address = QStringLiteral("127.0.0.%1").arg(n);
    config.stateDir = dir->path();
    config.deviceId = QStringLiteral("VD%1").arg(n, 8, 10, QLatin1Char('0'));
    if (tweak)
        tweak(config);
    auto decoder = std::make_unique<vdec::VirtualDecoder>(config);
    QString error;
    if (!decoder->start(&error)) {
        qWarning().noquote() << "decoder on" << config.address << "did not start:" << error;
        return nullptr;
    }
    dirs_.push_back(std::move(dir));
    decoders_.push_back(std::move(decoder));
    return decoders_.back().get();
}

TestClient* DecoderFixture::connectTo(vdec::VirtualDecoder* decoder, bool login)
{
    if (!decoder)
        return nullptr;
    auto client = std::make_unique<TestClient>();
    if (!client->connectTo(decoder->address(), decoder->port(), scaled(2000))) {
        qWarning() << "cannot connect to" << decoder->address() << decoder->port();
        return nullptr;
    }
    if (login) {
        const vdec::DecoderConfig& c = decoder->config();
        const int32_t rc = client->login(c.adminUser, c.adminPassword);
        if (rc != CMATRIX_OK) {
            qWarning() << "login refused:" << rc;
            return nullptr;
        }
    }
    clients_.push_back(std::move(client));
    return clients_.back().get();
}

void DecoderFixture::cleanup()
{
    clients_.clear();
    decoders_.clear(); // each stops and joins its threads
    dirs_.clear();
    claimedInUse_ = 0;
}

} // namespace kvmstest

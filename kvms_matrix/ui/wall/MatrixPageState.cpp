#include "MatrixPageState.h"

#include <QtGlobal>

namespace kvms_matrix {

namespace {

constexpr int kFirstRetryMs = 1000;
constexpr int kLongestRetryMs = 30000;

bool sameLogin(const MatrixInfo& a, const MatrixInfo& b)
{
    return a.ip == b.ip && a.manager_port == b.manager_port && a.username == b.username && a.password == b.password;
}

} // namespace

bool MatrixPageState::setDecoders(const QList<MatrixInfo>& decoders, const QString& currentIp)
{
    const MatrixInfo before = current();
    const bool hadCurrent = hasDecoder(m_currentIp);
    m_decoders = decoders;
    m_currentIp = currentIp;
    for (auto it = m_links.begin(); it != m_links.end();) {
        if (hasDecoder(it.key()))
            ++it;
        else
            it = m_links.erase(it);
    }
    if (!hasDecoder(currentIp))
        return hadCurrent;
    return !hadCurrent || !sameLogin(before, current());
}

bool MatrixPageState::hasDecoder(const QString& ip) const
{
    for (const MatrixInfo& d : m_decoders)
        if (d.ip == ip)
            return true;
    return false;
}

MatrixInfo MatrixPageState::decoder(const QString& ip) const
{
    for (const MatrixInfo& d : m_decoders)
        if (d.ip == ip)
            return d;
    return {};
}

void MatrixPageState::updateDecoder(const MatrixInfo& info)
{
    for (MatrixInfo& d : m_decoders)
        if (d.ip == info.ip)
            d = info;
}

MatrixPageState::Handle MatrixPageState::currentHandle() const
{
    const LinkInfo link = m_links.value(m_currentIp);
    return link.state == Link::Connected ? link.handle : Handle();
}

void MatrixPageState::markConnecting(const QString& ip)
{
    m_links[ip].state = Link::Connecting;
}

void MatrixPageState::markConnected(const QString& ip, const Handle& handle)
{
    LinkInfo& link = m_links[ip];
    link.state = Link::Connected;
    link.attempts = 0;
    link.handle = handle;
}

int MatrixPageState::markLost(const QString& ip)
{
    return nextDelay(ip, Link::Lost);
}

int MatrixPageState::markFailed(const QString& ip)
{
    return nextDelay(ip, Link::Failed);
}

void MatrixPageState::markReconnecting(const QString& ip)
{
    m_links[ip].state = Link::Reconnecting;
}

int MatrixPageState::nextDelay(const QString& ip, Link state)
{
    LinkInfo& link = m_links[ip];
    link.state = state;
    link.handle.reset();
    return backoffMs(++link.attempts);
}

int MatrixPageState::backoffMs(int attempt)
{
    if (attempt < 1)
        attempt = 1;
    // Shift at most so far that the doubling cannot overflow before the cap applies.
    const int shift = qMin(attempt - 1, 5);
    return qMin(kFirstRetryMs << shift, kLongestRetryMs);
}

} // namespace kvms_matrix

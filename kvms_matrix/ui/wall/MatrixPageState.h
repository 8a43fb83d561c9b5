#pragma once

#include "CSharedHandle.h"
#include "MatrixInfo.h"

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

namespace kvms_matrix {

// What the TV wall page knows about its decoders, kept apart from the widgets: the configured
// decoders, which one's wall is shown, each one's link state and handle, and when to try
// again after a lost link.
class MatrixPageState {
public:
    enum class Link { Idle, Connecting, Connected, Lost, Reconnecting, Failed };
    using Handle = QSharedPointer<CSharedHandle>;

    // Replaces the decoders; links of decoders still listed are kept. True when the decoder
    // whose wall is shown changed (its address or its login).
    bool setDecoders(const QList<MatrixInfo>& decoders, const QString& currentIp);
    QList<MatrixInfo> decoders() const { return m_decoders; }
    bool hasDecoder(const QString& ip) const;
    MatrixInfo decoder(const QString& ip) const;
    // Replaces the login data of a listed decoder (a refresh from the INI file, a login).
    void updateDecoder(const MatrixInfo& info);

    QString currentIp() const { return m_currentIp; }
    MatrixInfo current() const { return decoder(m_currentIp); }
    // The connection of the shown wall while it is logged in, else null.
    Handle currentHandle() const;

    Link link(const QString& ip) const { return m_links.value(ip).state; }
    int attempts(const QString& ip) const { return m_links.value(ip).attempts; }
    void markConnecting(const QString& ip);
    void markConnected(const QString& ip, const Handle& handle);
    // A failed login or a lost link: the link is dropped and the delay before the next attempt
    // (growing with each failure) is returned.
    int markLost(const QString& ip);
    int markFailed(const QString& ip);
    void markReconnecting(const QString& ip);

    // Delay before reconnect attempt `attempt` (1 for the first): doubling from 1 s, at most 30 s.
    static int backoffMs(int attempt);

    // A background picture sent to the wall and not yet confirmed.
    bool pendingPicture() const { return m_pendingPicture; }
    void setPendingPicture(bool pending) { m_pendingPicture = pending; }

private:
    struct LinkInfo {
        Link state = Link::Idle;
        int attempts = 0;
        Handle handle;
    };

    int nextDelay(const QString& ip, Link state);

    QList<MatrixInfo> m_decoders;
    QString m_currentIp;
    QMap<QString, LinkInfo> m_links;
    bool m_pendingPicture = false;
};

} // namespace kvms_matrix

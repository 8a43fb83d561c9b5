#pragma once

#include <QHostAddress>
#include <QList>
#include <QNetworkInterface>
#include <QStringList>

namespace kvms_matrix {

// The workstation's own IPv4 addresses, offered to the operator when a found decoder is given
// an address in the workstation's network. Loopback ones ("127.0.") are of no use there.
class LocalAddressList {
public:
    // Replaces `list` with the IPv4 addresses of the interfaces that are up and running. An
    // empty interface list means the system could not tell us (every machine has at least its
    // loopback interface): that is reported to the operator and the log, and false returned.
    static bool collect(const QList<QNetworkInterface>& interfaces, QStringList& list);
    // The IPv4 texts among `addresses`, in order and each once, without those starting "127.0.".
    static QStringList usableIpv4(const QList<QHostAddress>& addresses);

    static const char* const kFailureText; // "Local ip address get failed"
};

} // namespace kvms_matrix

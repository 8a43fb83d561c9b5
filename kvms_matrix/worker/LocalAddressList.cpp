#include "LocalAddressList.h"

#include "LogInfo.h"
#include "SystemAssistant.h"

namespace kvms_matrix {

const char* const LocalAddressList::kFailureText = "Local ip address get failed";

bool LocalAddressList::collect(const QList<QNetworkInterface>& interfaces, QStringList& list)
{
    list.clear();
    if (interfaces.isEmpty()) {
        const QString text = QString::fromLatin1(kFailureText);
        vms_sdk::log_info(text, QString());
        SystemAssistant::messageAlert(text);
        return false;
    }
    // An interface that is down or has no link cannot reach a decoder, whatever it holds.
    const QNetworkInterface::InterfaceFlags wanted = QNetworkInterface::IsUp | QNetworkInterface::IsRunning;
    QList<QHostAddress> addresses;
    for (const QNetworkInterface& interface : interfaces) {
        if ((interface.flags() & wanted) != wanted)
            continue;
        for (const QNetworkAddressEntry& entry : interface.addressEntries())
            addresses.append(entry.ip());
    }
    list = usableIpv4(addresses);
    return true;
}

QStringList LocalAddressList::usableIpv4(const QList<QHostAddress>& addresses)
{
    QStringList texts;
    for (const QHostAddress& address : addresses) {
        if (address.protocol() != QAbstractSocket::IPv4Protocol)
            continue;
        const QString text = address.toString();
        if (!text.startsWith(QLatin1String("127.0.")) && !texts.contains(text))
            texts.append(text);
    }
    return texts;
}

} // namespace kvms_matrix

#include "ScreenRecords.h"

#include "SdkText.h"
#include "SourceRecords.h"

#include <QStringList>

#include <algorithm>
#include <cstring>

namespace kvms_matrix {

namespace {

struct ScreenEntry {
    QString id;
    QString address;
    int outputIndex = 0;
    int outputType = 0;
    int position = 0;
};

QList<ScreenEntry> screensOf(const QList<MatrixInfo>& entries)
{
    QList<ScreenEntry> screens;
    for (const MatrixInfo& entry : entries) {
        if (entry.screenList.isEmpty()) {
            const QString id = entry.id == QString(QChar(0xFFFF)) ? entry.ip : entry.id;
            screens.append({ id, ScreenRecords::addressOf(id, entry.ip), 0, 0, entry.location });
            continue;
        }
        for (const MatrixScreenInfo& s : entry.screenList)
            screens.append({ s.id, ScreenRecords::addressOf(s.id, entry.ip), s.outputIndex, s.outputType, s.position });
    }
    return screens;
}

} // namespace

QString ScreenRecords::addressOf(const QString& screenId, const QString& fallback)
{
    const QString address = screenId.section(QLatin1Char('-'), 0, 0);
    return address.isEmpty() || address == QString(QChar(0xFFFF)) ? fallback : address;
}

std::vector<ScreenInfo_t> ScreenRecords::toRecords(
    const QList<MatrixInfo>& entries, const QMap<QString, MatrixInfo>& known)
{
    std::vector<ScreenInfo_t> records;
    for (const ScreenEntry& screen : screensOf(entries)) {
        ScreenInfo_t r {};
        // The name field is 32 bytes: at most 31 characters of the local 8-bit text.
        const QByteArray name = SourceRecords::local8Bit(screen.id, sizeof r.name);
        std::memcpy(r.name, name.constData(), size_t(name.size()));
        SdkText::copy(r.ip, sizeof r.ip, screen.address);
        const auto decoder = known.constFind(screen.address);
        if (decoder != known.constEnd()) {
            r.port = uint16_t(decoder->manager_port);
            SdkText::copy(r.userName, sizeof r.userName, decoder->username);
            SdkText::copy(r.password, sizeof r.password, decoder->password);
        }
        r.outputIndex = screen.outputIndex;
        r.outputType = screen.outputType;
        r.position = screen.position;
        records.push_back(r);
    }
    return records;
}

QList<MatrixInfo> ScreenRecords::fromRecords(const ScreenInfo_t* records, int count)
{
    QList<MatrixInfo> entries;
    for (int i = 0; records && i < count; ++i) {
        const ScreenInfo_t& r = records[i];
        const QString address = SdkText::read(r.ip, sizeof r.ip);
        auto entry = std::find_if(entries.begin(), entries.end(), [&](const MatrixInfo& e) { return e.ip == address; });
        if (entry == entries.end()) {
            MatrixInfo info;
            info.ip = address;
            info.manager_port = r.port;
            info.username = SdkText::read(r.userName, sizeof r.userName);
            info.password = SdkText::read(r.password, sizeof r.password);
            entries.append(info);
            entry = entries.end() - 1;
        }
        MatrixScreenInfo screen;
        screen.id = QString::fromLocal8Bit(r.name, int(strnlen(r.name, sizeof r.name)));
        screen.outputIndex = r.outputIndex;
        screen.outputType = r.outputType;
        screen.position = r.position;
        entry->screenList.append(screen);
        entry->screenCnt = entry->screenList.size();
    }
    return entries;
}

QStringList ScreenRecords::addresses(const QList<MatrixInfo>& entries)
{
    QStringList list;
    for (const ScreenEntry& screen : screensOf(entries)) {
        if (!list.contains(screen.address))
            list.append(screen.address);
    }
    return list;
}

QString ScreenRecords::logText(const std::vector<ScreenInfo_t>& records)
{
    QStringList parts;
    for (const ScreenInfo_t& r : records) {
        parts.append(
            QStringLiteral("%1@%2:%3")
                .arg(SdkText::read(r.ip, sizeof r.ip), QString::number(r.position), QString::number(r.outputIndex)));
    }
    return QLatin1Char('[') + parts.join(QLatin1Char(',')) + QLatin1Char(']');
}

} // namespace kvms_matrix

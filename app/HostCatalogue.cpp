#include "HostCatalogue.h"

#include "DevsMgrData.h"
#include "KSingleton.h"
#include "MatrixData.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int kMaxStreams = 4096; // a catalogue is a file anyone may edit

void addStream(MatrixData* streams, const QString& name, const QString& url)
{
    if (!name.isEmpty() && !url.isEmpty())
        streams->addStream({ name, url });
}

} // namespace

bool HostCatalogue::load(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray json = file.readAll();
    if (!KCOMMON::KSingleton<DevsMgrData>::instance()->loadFromJson(json, error))
        return false;

    MatrixData* streams = KCOMMON::KSingleton<MatrixData>::instance();
    for (const MatrixStream& old : streams->streams())
        streams->removeStream(old.name);
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    int count = 0;
    for (const QJsonValue& device : root.value(QLatin1String("devices")).toArray()) {
        for (const QJsonValue& value : device.toObject().value(QLatin1String("channels")).toArray()) {
            const QJsonObject channel = value.toObject();
            const QString name = channel.value(QLatin1String("name")).toString();
            if (++count > kMaxStreams)
                return true;
            addStream(streams, name + QStringLiteral(" (main)"), channel.value(QLatin1String("main")).toString());
            addStream(streams, name + QStringLiteral(" (sub)"), channel.value(QLatin1String("sub")).toString());
        }
    }
    for (const QJsonValue& value : root.value(QLatin1String("streams")).toArray()) {
        if (++count > kMaxStreams)
            break;
        const QJsonObject stream = value.toObject();
        addStream(
            streams, stream.value(QLatin1String("name")).toString(), stream.value(QLatin1String("url")).toString());
    }
    return true;
}

#include "MatrixData.h"

#include <QMutexLocker>

#include <algorithm>

MatrixData::MatrixData(QObject* parent)
    : QObject(parent)
{
}

QList<MatrixStream> MatrixData::streams() const
{
    QMutexLocker locker(&mutex_);
    return streams_;
}

bool MatrixData::addStream(const MatrixStream& stream)
{
    if (stream.name.isEmpty() || stream.url.isEmpty())
        return false;
    {
        QMutexLocker locker(&mutex_);
        for (const MatrixStream& known : streams_) {
            if (known.name == stream.name)
                return false;
        }
        streams_.append(stream);
    }
    emit signalStreamsChanged();
    return true;
}

bool MatrixData::removeStream(const QString& name)
{
    {
        QMutexLocker locker(&mutex_);
        auto it = std::find_if(
            streams_.begin(), streams_.end(), [&name](const MatrixStream& stream) { return stream.name == name; });
        if (it == streams_.end())
            return false;
        streams_.erase(it);
    }
    emit signalStreamsChanged();
    return true;
}

bool MatrixData::streamByName(const QString& name, MatrixStream* result) const
{
    QMutexLocker locker(&mutex_);
    for (const MatrixStream& stream : streams_) {
        if (stream.name == name) {
            if (result)
                *result = stream;
            return true;
        }
    }
    return false;
}

#pragma once

#include <QList>
#include <QMutex>
#include <QObject>
#include <QString>

// A video stream the host offers for the TV wall.
struct MatrixStream {
    QString name;
    QString url;
};

// The host's list of matrix video streams, reached through KCOMMON::KSingleton<MatrixData>::instance().
class MatrixData : public QObject {
    Q_OBJECT

public:
    explicit MatrixData(QObject* parent = nullptr);

    QList<MatrixStream> streams() const;
    // False for an empty name or URL, or a name already listed.
    bool addStream(const MatrixStream& stream);
    bool removeStream(const QString& name);
    bool streamByName(const QString& name, MatrixStream* result) const;

signals:
    void signalStreamsChanged();

private:
    mutable QMutex mutex_;
    QList<MatrixStream> streams_;
};

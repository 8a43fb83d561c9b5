#include "OperatorMessages.h"

#include "SystemAssistant.h"

#include <QMutex>

namespace {
QMutex mutex;
QStringList shown;
} // namespace

void OperatorMessages::collect()
{
    SystemAssistant::setMessageSink([](const QString& text) {
        QMutexLocker lock(&mutex);
        shown.append(text);
    });
}

QStringList OperatorMessages::all()
{
    QMutexLocker lock(&mutex);
    return shown;
}

void OperatorMessages::clear()
{
    QMutexLocker lock(&mutex);
    shown.clear();
}

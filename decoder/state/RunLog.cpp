#include "RunLog.h"

#include <QDateTime>

namespace vdec {

void RunLog::add(const QString& event)
{
    const QString line
        = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss ")) + event.left(512);
    std::lock_guard<std::mutex> lock(mutex_);
    lines_.push_back(line);
    while (lines_.size() > kCapacity)
        lines_.pop_front();
}

QByteArray RunLog::text() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    QByteArray out;
    for (const QString& line : lines_)
        out += line.toUtf8() + '\n';
    return out;
}

} // namespace vdec

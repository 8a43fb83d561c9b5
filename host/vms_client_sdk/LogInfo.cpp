#include "LogInfo.h"

#include <QDateTime>
#include <QFile>

#include <cstdio>
#include <mutex>

namespace vms_sdk {

namespace {

const char* const kDefaultLogFile = "kvms_client.log";

struct LogState {
    std::mutex mutex; // a pthread mutex: visible to ThreadSanitizer, unlike QMutex
    QString path = QString::fromLatin1(kDefaultLogFile);
    std::FILE* file = nullptr;
};

LogState& logState()
{
    // Leaked on purpose so that logging still works while the process exits.
    static LogState* const state = new LogState;
    return *state;
}

QString oneLine(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    return text;
}

} // namespace

void log_info(const QString& message, const QString& extra)
{
    QString body = oneLine(message);
    if (!extra.isEmpty())
        body += QLatin1Char(' ') + oneLine(extra);

    LogState& state = logState();
    std::lock_guard<std::mutex> lock(state.mutex);
    if (!state.file) {
        state.file = std::fopen(QFile::encodeName(state.path).constData(), "a");
        if (!state.file)
            return;
    }
    // Stamped under the lock, so the times in the file never go backwards.
    const QByteArray line
        = (QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz ")) + body).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), state.file);
    std::fflush(state.file);
}

void set_log_file(const QString& path)
{
    LogState& state = logState();
    std::lock_guard<std::mutex> lock(state.mutex);
    if (state.file) {
        std::fclose(state.file);
        state.file = nullptr;
    }
    state.path = path.isEmpty() ? QString::fromLatin1(kDefaultLogFile) : path;
}

QString log_file()
{
    LogState& state = logState();
    std::lock_guard<std::mutex> lock(state.mutex);
    return state.path;
}

} // namespace vms_sdk

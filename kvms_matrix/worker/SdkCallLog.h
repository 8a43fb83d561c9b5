#pragma once

#include <QElapsedTimer>
#include <QString>

namespace kvms_matrix {

// One line in the host's log for every SDK call the worker makes. The templates are fixed texts
// that support staff grep for, so their spacing is kept exactly as the callers give it.
class SdkCallLog {
public:
    // "{ funcName = <name> , ret = <ret> }"
    static void call(const char* funcName, int ret);
    // "{ funcName = <name>  , event = <event> }" (two blanks before the comma)
    static void event(const char* funcName, int event);
    // "{ funcName = <name> , ret = <ret> , time = <now> }"
    static void callAt(const char* funcName, int ret);
    // Logs a line already formatted by the caller (the longer templates with parameters).
    static void line(const QString& text);

    static QString callText(const char* funcName, int ret);
    static QString eventText(const char* funcName, int event);
    // Local time as "yyyy-MM-dd hh:mm:ss".
    static QString now();
    // A handle as the templates print it ("mHandle = 0x...").
    static QString pointer(const void* handle);

    // Times one SDK call for the "Elapsed" field of the longer templates.
    class Timer {
    public:
        Timer() { m_timer.start(); }
        void restart() { m_timer.restart(); }
        qint64 elapsedMs() const { return m_timer.elapsed(); }
        QString elapsed() const { return QString::number(elapsedMs()); }

    private:
        QElapsedTimer m_timer;
    };
};

} // namespace kvms_matrix

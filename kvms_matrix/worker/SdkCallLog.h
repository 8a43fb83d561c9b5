#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>

namespace kvms_matrix {

// One line in the host's log for every SDK call the worker makes. The templates are fixed texts
// that support staff grep for, so their spacing is kept exactly as the callers give it.
class SdkCallLog {
public:
    // The longer templates of the TV wall operations, odd spacing included.
    static const char* const kGetMatrix; // CMatrix_GetMatrix
    static const char* const kBannerFailed; // CMatrix_GetBanner when it fails
    static const char* const kDivisions; // CMatrix_WindowGetDivision
    static const char* const kSetStatus; // CMatrix_SetStatus on a secondary decoder
    static const char* const kSetScreens; // CMatrix_SetScreens
    static const char* const kDisplayScreen; // Discovery_DisplayScreen
    static const char* const kDisplayFrame; // the picture pushed after binding it
    static const char* const kDeviceGet; // CMatrix_WindowDeviceGet
    static const char* const kTimed; // any other call: name, handle, result, time, elapsed

    // "{ funcName = <name> , ret = <ret> }"
    static void call(const char* funcName, int ret);
    // "{ funcName = <name>  , event = <event> }" (two blanks before the comma)
    static void event(const char* funcName, int event);
    // "{ funcName = <name> , ret = <ret> , time = <now> }"
    static void callAt(const char* funcName, int ret);
    // Logs a line already formatted by the caller (the longer templates with parameters).
    static void line(const QString& text);
    // Replaces each "%n" (one digit) by values[n - 1] in a single pass, so a value that itself
    // holds "%2" is written as it is. Placeholders without a value are left alone.
    static QString fill(const char* templateText, const QStringList& values);
    static void write(const char* templateText, const QStringList& values);
    // The kTimed line.
    static void timed(const char* funcName, const void* sdkHandle, int ret, qint64 elapsedMs);

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

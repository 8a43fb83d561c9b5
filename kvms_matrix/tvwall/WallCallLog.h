#pragma once

#include <QString>
#include <QStringList>

#include <QElapsedTimer>

namespace kvms_matrix {

// The SDK call log lines of the TV wall operations. Support staff grep for these templates as
// they are, odd spacing included, so each is written once here.
class WallCallLog {
public:
    static const char* const kGetMatrix; // CMatrix_GetMatrix
    static const char* const kBannerFailed; // CMatrix_GetBanner when it fails
    static const char* const kDivisions; // CMatrix_WindowGetDivision
    static const char* const kSetStatus; // CMatrix_SetStatus on a secondary decoder
    static const char* const kSetScreens; // CMatrix_SetScreens
    static const char* const kDisplayScreen; // Discovery_DisplayScreen
    static const char* const kDisplayFrame; // the picture pushed after binding it
    static const char* const kDeviceGet; // CMatrix_WindowDeviceGet
    static const char* const kTimed; // any other call: name, handle, result, time, elapsed

    // Replaces each "%n" (one digit) by values[n - 1] in a single pass, so a value that itself
    // holds "%2" is written as it is. Placeholders without a value are left alone.
    static QString fill(const char* templateText, const QStringList& values);
    static void write(const char* templateText, const QStringList& values);
    // The kTimed line.
    static void timed(const char* funcName, const void* sdkHandle, int ret, qint64 elapsedMs);
};

// Measures one SDK call for the "Elapsed" field.
class WallCallTimer {
public:
    WallCallTimer() { m_timer.start(); }
    QString elapsed() const { return QString::number(m_timer.elapsed()); }
    qint64 elapsedMs() const { return m_timer.elapsed(); }

private:
    QElapsedTimer m_timer;
};

} // namespace kvms_matrix

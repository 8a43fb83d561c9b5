#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

namespace kvms_matrix {

// Module-wide notifications between forms, players and capture code that do not know each
// other. Signals only; reached through KCOMMON::KSingleton<MatrixSignals>::instance().
class MatrixSignals : public QObject {
    Q_OBJECT

public:
    explicit MatrixSignals(QObject* parent = nullptr);

signals:
    // A gathering of screen pictures succeeded.
    void signalGatherSuccess();
    // A context-menu action was chosen on a wall window: operatetype is the action's code, type its
    // argument (a division count, 1 or 0 for full display).
    void signalRightMemuClicked(int windowId, int subWindowId, int windowType, int operatetype, int type);
    // The TV wall canvas must be redrawn from fresh data.
    void signalRefreshTvWall();
    void signalProgressBarShow(bool show, int minimum, int maximum, int value, bool busy);
    // Playback progress of a recording on the wall.
    void signalPlaybackProgress(QString windowKey, quint64 position, quint64 duration, const QDateTime& time);
    void signalVideoStateChanged(QString windowKey, int status, int playState, QString text);
    void signalSetWindowTitle(const QString& title);
    // A video on a wall window was left.
    void signalVideoExitback(int windowId, int subWindowId, int windowType);
    // The list of video devices must be reloaded.
    void signalRefreshVideoDev(int reason);
};

} // namespace kvms_matrix

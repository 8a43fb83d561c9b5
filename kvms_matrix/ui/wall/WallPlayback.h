#pragma once

#include "CSharedHandle.h"
#include "MatrixWindowInfo.h"
#include "PlaybackDlg.h"

#include <QDateTime>
#include <QMap>
#include <QObject>
#include <QSharedPointer>

#include <functional>

class QWidget;

namespace kvms_matrix {

class ControlMatrixWt;
class MatrixSdkWorker;
class PlaybackBarWt;
class PlayerbackPlayer;
class SourcePane;

// The wall page's recording playback: the dialog on "playback", the binding of a "rec_"
// display source to the sub-window, one PlayerbackPlayer per window once the decoder took the
// binding, the control bar of the selected replay, and "exitback" (player stopped, media
// distribution removed, sub-window cleared).
class WallPlayback : public QObject {
    Q_OBJECT

public:
    using HandleGetter = std::function<QSharedPointer<CSharedHandle>()>;
    using TipSetter = std::function<void(const QString&)>;

    WallPlayback(MatrixSdkWorker* worker, ControlMatrixWt* canvas, SourcePane* sources, HandleGetter handle,
        TipSetter tip, QWidget* page);
    ~WallPlayback() override;

    PlaybackBarWt* bar() const { return m_bar; }
    PlayerbackPlayer* player(int windowId, int subWindowId, int windowType) const;
    QList<PlayerbackPlayer*> players() const { return m_players.values(); }

    void openDialog(int windowId, int subWindowId, int windowType); // the "playback" action
    // Binds the replay's source to the sub-window; the player starts when the decoder took it.
    void start(int windowId, int subWindowId, int windowType, const PlaybackChoice& choice);
    void stopAll();

public slots:
    void slotVideoExitback(int windowId, int subWindowId, int windowType);

private:
    void onSourceBound(int result, const MatrixWindowInfo& window, int subWindowId);
    void onWindowCleared(int windowId, int subWindowId, int windowType);
    void onSelected(int windowId, int subWindowId, int windowType);
    void onProgress(const QString& key, quint64 position, quint64 duration, const QDateTime& time);
    void onVideoState(const QString& key, int status, int playState);
    void showOnBar(PlayerbackPlayer* player);
    PlayerbackPlayer* playerOf(const QString& key) const { return m_players.value(key); }
    // Stops and forgets the player of a key; its distribution goes with it.
    void finish(const QString& key, int windowId, int subWindowId, int windowType, bool clearWindow);

    MatrixSdkWorker* m_worker;
    ControlMatrixWt* m_canvas;
    SourcePane* m_sources;
    HandleGetter m_handle;
    TipSetter m_tip;
    QWidget* m_page;
    PlaybackBarWt* m_bar;
    QMap<QString, PlaybackChoice> m_pending; // bound, waiting for the decoder's answer
    QMap<QString, PlayerbackPlayer*> m_players;
    QMap<QString, QString> m_titles;
};

} // namespace kvms_matrix

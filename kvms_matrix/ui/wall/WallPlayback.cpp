#include "WallPlayback.h"

#include "ControlMatrixWt.h"
#include "MatrixSdkWorker.h"
#include "MatrixSignals.h"
#include "PlaybackBarWt.h"
#include "PlayerbackPlayer.h"
#include "SourcePane.h"
#include "SourceRecords.h"
#include "WindowKey.h"

#include "KSingleton.h"
#include "SystemAssistant.h"

namespace kvms_matrix {

WallPlayback::WallPlayback(MatrixSdkWorker* worker, ControlMatrixWt* canvas, SourcePane* sources, HandleGetter handle,
    TipSetter tip, QWidget* page)
    : QObject(page)
    , m_worker(worker)
    , m_canvas(canvas)
    , m_sources(sources)
    , m_handle(std::move(handle))
    , m_tip(std::move(tip))
    , m_page(page)
    , m_bar(new PlaybackBarWt(page))
{
    const auto queued = Qt::QueuedConnection;
    connect(
        worker, &MatrixSdkWorker::signalSetWindowSignalSourceResult, this,
        [this](int result, const MatrixWindowInfo& window, int subWindowId, bool) {
            onSourceBound(result, window, subWindowId);
        },
        queued);
    connect(
        worker, &MatrixSdkWorker::signalClearWindowResult, this,
        [this](
            int, int windowId, int subWindowId, int windowType) { onWindowCleared(windowId, subWindowId, windowType); },
        queued);
    connect(canvas, &ControlMatrixWt::signalWindowSelected, this, &WallPlayback::onSelected);
    MatrixSignals* hub = KCOMMON::KSingleton<MatrixSignals>::instance();
    connect(hub, &MatrixSignals::signalVideoExitback, this, &WallPlayback::slotVideoExitback);
    connect(hub, &MatrixSignals::signalPlaybackProgress, this, &WallPlayback::onProgress);
    connect(hub, &MatrixSignals::signalVideoStateChanged, this,
        [this](
            const QString& key, int status, int playState, const QString&) { onVideoState(key, status, playState); });

    connect(m_bar, &PlaybackBarWt::signalPause, this, [this](const QString& key, bool pause) {
        if (PlayerbackPlayer* p = playerOf(key))
            p->pause(pause);
    });
    connect(m_bar, &PlaybackBarWt::signalSpeed, this, [this](const QString& key, const QString& speed) {
        if (PlayerbackPlayer* p = playerOf(key))
            p->setSpeed(speed);
    });
    connect(m_bar, &PlaybackBarWt::signalSeek, this, [this](const QString& key, const QDateTime& time) {
        if (PlayerbackPlayer* p = playerOf(key))
            p->seek(time);
    });
    connect(m_bar, &PlaybackBarWt::signalStop, this, [this](const QString& key) {
        const WindowPlace place = windowPlace(key);
        if (place.windowId >= 0)
            slotVideoExitback(place.windowId, place.subWindowId, place.windowType);
    });
}

WallPlayback::~WallPlayback()
{
    stopAll();
}

PlayerbackPlayer* WallPlayback::player(int windowId, int subWindowId, int windowType) const
{
    return playerOf(windowKey(windowId, subWindowId, windowType));
}

void WallPlayback::openDialog(int windowId, int subWindowId, int windowType)
{
    // The camera the sub-window shows is the likely one; else the one chosen in the tree.
    QString channelId;
    MatrixWindowInfo window;
    if (m_canvas->windowInfo(windowId, windowType, &window))
        for (const MatrixSubWindowInfo& sub : window.subWindows)
            if (sub.subWindowId == subWindowId && sub.device.deviceType == 1)
                channelId = sub.device.deviceId;
    MatrixDeviceInfo chosen;
    if (channelId.isEmpty() && m_sources && m_sources->currentSource(&chosen) && chosen.deviceType == 1)
        channelId = chosen.deviceId;
    auto* dialog = new PlaybackDlg(channelId, m_page);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, windowId, subWindowId, windowType] {
        start(windowId, subWindowId, windowType, dialog->choice());
    });
    dialog->open();
}

void WallPlayback::start(int windowId, int subWindowId, int windowType, const PlaybackChoice& choice)
{
    const QSharedPointer<CSharedHandle> handle = m_handle();
    MatrixWindowInfo window;
    if (!handle || !m_canvas->windowInfo(windowId, windowType, &window))
        return;
    const QString key = windowKey(windowId, subWindowId, windowType);
    if (m_players.contains(key))
        finish(key, windowId, subWindowId, windowType, false); // a new replay takes the window over
    MatrixDeviceInfo source;
    source.deviceType = 2;
    source.deviceId = SourceRecords::fittedDeviceId(
        QStringLiteral("rec_%1_%2_%3").arg(windowId).arg(subWindowId).arg(choice.channelId));
    source.displayName = QStringLiteral("rec_") + choice.name;
    source.deviceName = source.displayName;
    source.channel = 0; // a fresh distribution channel
    bool found = false;
    for (MatrixSubWindowInfo& sub : window.subWindows) {
        if (sub.subWindowId == subWindowId) {
            sub.device = source;
            found = true;
        }
    }
    if (!found) {
        SystemAssistant::messageAlert(tr("please select window"), m_page);
        return;
    }
    m_pending.insert(key, choice);
    m_worker->setWindowSignalSource(handle, window, subWindowId, false);
}

void WallPlayback::onSourceBound(int result, const MatrixWindowInfo& window, int subWindowId)
{
    const QString key = windowKey(window.windowId, subWindowId, window.windowType);
    if (!m_pending.contains(key))
        return;
    const PlaybackChoice choice = m_pending.take(key);
    const QSharedPointer<CSharedHandle> handle = m_handle();
    if (result != 0 || !handle)
        return; // the page tells the operator why
    int channel = 0;
    for (const MatrixSubWindowInfo& sub : window.subWindows)
        if (sub.subWindowId == subWindowId)
            channel = sub.device.channel;
    auto* player = new PlayerbackPlayer(m_page);
    player->hide(); // the picture goes to the wall; messages reach the operator in the tip
    player->setObjectName(QStringLiteral("matrixPlaybackPlayer"));
    player->setTarget(handle, window.windowId, subWindowId, window.windowType, channel);
    connect(player, &CKawsPlayer::signalMessageShown, this, [this, player, choice](const QString& text, int) {
        // A paused replay has no data by design: that is no news for the operator.
        if (!text.isEmpty() && player->playState() == 1)
            m_tip(QStringLiteral("%1: %2").arg(choice.name, text));
    });
    m_players.insert(key, player);
    m_titles.insert(key, choice.name);
    vms_sdk::PlaybackByTimeCondition condition;
    condition.deviceId = choice.deviceId;
    condition.channel = choice.channel;
    condition.begin = choice.begin;
    condition.end = choice.end;
    player->Start(condition);
    showOnBar(player);
}

void WallPlayback::slotVideoExitback(int windowId, int subWindowId, int windowType)
{
    finish(windowKey(windowId, subWindowId, windowType), windowId, subWindowId, windowType, true);
}

void WallPlayback::finish(const QString& key, int windowId, int subWindowId, int windowType, bool clearWindow)
{
    m_pending.remove(key);
    PlayerbackPlayer* player = m_players.take(key);
    m_titles.remove(key);
    // The decoder the replay went to, even when the page shows another one by now.
    const QSharedPointer<CSharedHandle> handle = player ? player->connection() : m_handle();
    if (player) {
        player->Stop();
        player->deleteLater();
    }
    if (m_bar->windowKey() == key)
        m_bar->clearTarget();
    if (!handle)
        return;
    m_worker->removeMdHandle(handle, windowId, subWindowId, windowType);
    if (clearWindow)
        m_worker->clearWindow(handle, windowId, subWindowId, windowType);
}

void WallPlayback::onWindowCleared(int windowId, int subWindowId, int windowType)
{
    // Cleared by other means ("window clear"): the replay has nowhere to go.
    const QString key = windowKey(windowId, subWindowId, windowType);
    if (m_players.contains(key))
        finish(key, windowId, subWindowId, windowType, false);
}

void WallPlayback::stopAll()
{
    const QStringList keys = m_players.keys();
    for (const QString& key : keys) {
        const WindowPlace place = windowPlace(key);
        finish(key, place.windowId, place.subWindowId, place.windowType, false);
    }
}

void WallPlayback::onSelected(int windowId, int subWindowId, int windowType)
{
    if (PlayerbackPlayer* p = player(windowId, subWindowId, windowType))
        showOnBar(p);
}

void WallPlayback::showOnBar(PlayerbackPlayer* player)
{
    const vms_sdk::PlaybackByTimeCondition c = player->condition();
    m_bar->setTarget(player->windowKey(), m_titles.value(player->windowKey()), c.begin, c.end, player->playState(),
        player->speedText());
}

void WallPlayback::onProgress(const QString& key, quint64 position, quint64 duration, const QDateTime& time)
{
    if (key == m_bar->windowKey())
        m_bar->setProgress(position, duration, time);
}

void WallPlayback::onVideoState(const QString& key, int status, int playState)
{
    if (key != m_bar->windowKey())
        return;
    PlayerbackPlayer* p = playerOf(key);
    if (p && status == PlayerbackPlayer::kStatusStreaming && p->streamId().isEmpty())
        m_bar->setFinished(); // the span was played to its end
    else
        m_bar->setPlayState(playState);
}

} // namespace kvms_matrix

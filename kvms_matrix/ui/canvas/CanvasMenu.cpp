#include "CanvasMenu.h"

#include <QAction>
#include <QMenu>

namespace kvms_matrix {

namespace {

const char* const kMenuStyle = "QMenu::item{padding-top:4px;padding-bottom:4px;padding-left:15px;padding-right:15px} "
                               "QMenu::icon{ position:absolute; left:10px; }";

// Where an entry is shown.
enum Shown : unsigned {
    Ordinary = 1u << 0,
    Spliced = 1u << 1,
    Floating = 1u << 2,
    Kinds = Ordinary | Spliced | Floating,
    NeedsSource = 1u << 3, // only over a bound source
    NeedsCamera = 1u << 4, // only over a live camera
    NeedsPlayback = 1u << 5, // only while a recording plays
    NotInPlayback = 1u << 6,
    NeedsDivided = 1u << 7, // only on a window of more than one sub-window
};

struct Entry {
    const char* text;
    const char* icon;
    int code;
    int division;
    unsigned shown;
};

// The menu in its order. Divisions go to the division sub-menu of an ordinary window and to
// the spliced window's own menu.
const Entry kEntries[] = {
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "playback"), ":/menu/images/menu/playback_n.png",
        CanvasMenu::Playback, 0, Kinds | NeedsCamera | NotInPlayback },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "exitback"), ":/matrix_images/images/exit_replay.png",
        CanvasMenu::Exitback, 0, Kinds | NeedsPlayback },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "window clear"), ":/matrix_images/images/wnd_clean_n.png",
        CanvasMenu::Clear, 0, Kinds | NeedsSource },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "fullScreen"), ":/matrix_images/images/maximize_n.png",
        CanvasMenu::Full, 0, Ordinary | Spliced | NeedsDivided },
    { "1", ":/matrix_images/images/1_n.png", CanvasMenu::Division, 1, Ordinary | Spliced },
    { "4", ":/matrix_images/images/4_n.png", CanvasMenu::Division, 4, Ordinary | Spliced },
    { "6", ":/matrix_images/images/6_n.png", CanvasMenu::Division, 6, Ordinary | Spliced },
    { "8", ":/matrix_images/images/8_n.png", CanvasMenu::Division, 8, Ordinary | Spliced },
    { "9", ":/matrix_images/images/9_n.png", CanvasMenu::Division, 9, Ordinary | Spliced },
    { "16", ":/matrix_images/images/16_n.png", CanvasMenu::Division, 16, Ordinary | Spliced },
    { "25", ":/matrix_images/images/25_n.png", CanvasMenu::Division, 25, Ordinary | Spliced },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "unjoin"), ":/matrix_images/images/split_n.png", CanvasMenu::Unjoin,
        0, Spliced },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "grab screen"), ":/matrix_images/images/tp_n.png",
        CanvasMenu::GrabScreen, 0, Kinds | NotInPlayback },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "set background"), ":/matrix_images/images/photo_n.png",
        CanvasMenu::Background, 0, Kinds | NotInPlayback },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "open voice"), ":/matrix_images/images/ico_open_voice_n.png",
        CanvasMenu::VoiceOn, 0, Kinds | NeedsSource },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "close voice"), ":/matrix_images/images/ico_close_voice_n.png",
        CanvasMenu::VoiceOff, 0, Kinds | NeedsSource },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "HD"), ":/matrix_images/images/hd_n.png", CanvasMenu::MainStream, 0,
        Kinds | NeedsCamera | NotInPlayback },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "SD"), ":/matrix_images/images/sd_n.png", CanvasMenu::SubStream, 0,
        Kinds | NeedsCamera | NotInPlayback },
    { QT_TRANSLATE_NOOP("kvms_matrix::CanvasMenu", "Auto"), ":/matrix_images/images/auto_n.png", CanvasMenu::AutoStream,
        0, Kinds | NeedsCamera | NotInPlayback },
};

constexpr const char* kShownProperty = "kvmsShown";

bool shownFor(unsigned shown, const CanvasMenu::State& state)
{
    const unsigned kind = state.windowType == 1 ? Spliced : state.windowType == 2 ? Floating : Ordinary;
    return (shown & kind) && (!(shown & NeedsSource) || state.hasSource) && (!(shown & NeedsCamera) || state.camera)
        && (!(shown & NeedsPlayback) || state.playback) && (!(shown & NotInPlayback) || !state.playback)
        && (!(shown & NeedsDivided) || state.division > 1);
}

} // namespace

CanvasMenu::CanvasMenu(QWidget* owner)
    : QObject(owner)
{
    m_menu = new QMenu(owner);
    m_menu->setObjectName(QStringLiteral("matrixWindowMenu"));
    m_divisionMenu = new QMenu(tr("Division"), m_menu);
    m_divisionMenu->setObjectName(QStringLiteral("matrixDivisionMenu"));
    m_divisionMenu->setIcon(QIcon(QStringLiteral(":/matrix_images/images/9_n.png")));
    m_joinMenu = new QMenu(owner);
    m_joinMenu->setObjectName(QStringLiteral("matrixJoinMenu"));
    for (QMenu* menu : { m_menu, m_divisionMenu, m_joinMenu })
        menu->setStyleSheet(QLatin1String(kMenuStyle));

    bool divisionsPlaced = false;
    for (const Entry& entry : kEntries) {
        const QString text = entry.code == Division ? QString::fromLatin1(entry.text) : tr(entry.text);
        auto* action = new QAction(QIcon(QString::fromLatin1(entry.icon)), text, this);
        action->setData(QList<QVariant> { entry.code, entry.division });
        action->setProperty(kShownProperty, entry.shown);
        action->setIconVisibleInMenu(true);
        m_actions.append(action);
        if (entry.code == Full)
            m_fullAction = action;
        // The spliced window's menu holds everything it may show; the ordinary menu groups the
        // divisions into their sub-menu and has no "unjoin".
        m_joinMenu->addAction(action);
        if (entry.code == Division) {
            m_divisionMenu->addAction(action);
            if (!divisionsPlaced)
                m_menu->addMenu(m_divisionMenu);
            divisionsPlaced = true;
        } else if (entry.code != Unjoin) {
            m_menu->addAction(action);
        }
    }
}

QMenu* CanvasMenu::prepare(const State& state)
{
    for (QAction* action : qAsConst(m_actions))
        action->setVisible(shownFor(action->property(kShownProperty).toUInt(), state));
    m_divisionMenu->menuAction()->setVisible(state.windowType == 0);
    m_fullAction->setText(state.full ? tr("Exit fullScreen") : tr("fullScreen"));
    m_fullAction->setIcon(QIcon(state.full ? QStringLiteral(":/matrix_images/images/maximize_quti_n.png")
                                           : QStringLiteral(":/matrix_images/images/maximize_n.png")));
    m_opened = state.windowType == 1 ? m_joinMenu : m_menu;
    return m_opened;
}

QAction* CanvasMenu::action(int code, int division) const
{
    for (QAction* action : m_actions)
        if (codeOf(action) == code && divisionOf(action) == division)
            return action;
    return nullptr;
}

int CanvasMenu::codeOf(const QAction* action)
{
    const QList<QVariant> data = action ? action->data().toList() : QList<QVariant>();
    return data.size() == 2 ? data.at(0).toInt() : -1;
}

int CanvasMenu::divisionOf(const QAction* action)
{
    const QList<QVariant> data = action ? action->data().toList() : QList<QVariant>();
    return data.size() == 2 ? data.at(1).toInt() : 0;
}

} // namespace kvms_matrix

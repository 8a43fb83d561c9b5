#pragma once

#include <QList>
#include <QObject>

class QAction;
class QMenu;
class QWidget;

namespace kvms_matrix {

// The canvas's context menus, built once from one table of actions. Which entries a window
// shows depends on its kind and state; `prepare` sets that before each popup.
class CanvasMenu : public QObject {
    Q_OBJECT

public:
    // Action codes carried to the page (the values are the page's operation codes).
    enum Code {
        Division = 0,
        Playback = 1,
        Clear = 2,
        GrabScreen = 8,
        Background = 9,
        Unjoin = 10,
        Full = 12,
        VoiceOff = 13,
        VoiceOn = 14,
        MainStream = 15,
        SubStream = 16,
        AutoStream = 17,
        Exitback = 100, // not a page code: ends playback through its own signal
    };

    // What the menu is opened on.
    struct State {
        int windowType = 0; // 0 one cell, 1 spliced, 2 floating
        int division = 1;
        bool hasSource = false;
        bool camera = false; // the source is a camera channel (stream choice, playback)
        bool playback = false; // a recording plays in the sub-window
        bool full = false; // a sub-window of the window is shown full
    };

    explicit CanvasMenu(QWidget* owner);

    // The menu to pop up for a window in this state: the spliced window's own menu, or the
    // ordinary one with its division sub-menu.
    QMenu* prepare(const State& state);

    QMenu* menu() const { return m_menu; }
    QMenu* divisionMenu() const { return m_divisionMenu; }
    QMenu* joinMenu() const { return m_joinMenu; }
    // The top menu last prepared. Actions are shared by the menus, and every menu holding an
    // action reports its trigger: only the open one's report counts.
    QMenu* opened() const { return m_opened; }
    QList<QAction*> actions() const { return m_actions; }
    QAction* action(int code, int division = 0) const;

    static int codeOf(const QAction* action);
    static int divisionOf(const QAction* action);

private:
    QMenu* m_menu = nullptr;
    QMenu* m_divisionMenu = nullptr;
    QMenu* m_joinMenu = nullptr;
    QList<QAction*> m_actions; // in table order
    QAction* m_fullAction = nullptr;
    QMenu* m_opened = nullptr;
};

} // namespace kvms_matrix

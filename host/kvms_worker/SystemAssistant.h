#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

// Operator messages of the host.
class SystemAssistant {
public:
    using MessageSink = std::function<void(const QString& text)>;

    SystemAssistant() = delete;

    // Tells the operator something in a message box that does not block the caller. Callable
    // from any thread: the box (or the sink) is always served on the GUI thread.
    static void messageAlert(const QString& text, QWidget* parent = nullptr);

    // While a sink is set it receives every message instead of a box being shown (on the GUI
    // thread); an empty function restores the boxes.
    static void setMessageSink(MessageSink sink);

    // The latest messages, oldest first, recorded at the time messageAlert() was called.
    static QStringList recentMessages();
    static void clearRecentMessages();
};

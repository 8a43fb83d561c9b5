#include "SystemAssistant.h"

#include "DictDef.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QThread>
#include <QtDebug>

#include <mutex>

namespace {

// Reached from any thread. A standard mutex: ThreadSanitizer sees its locking, not QMutex's.
struct AlertState {
    std::mutex mutex;
    SystemAssistant::MessageSink sink;
    QStringList recent;
};

AlertState& alertState()
{
    static AlertState state;
    return state;
}

void showOnGuiThread(const QString& text, QWidget* parent)
{
    SystemAssistant::MessageSink sink;
    {
        AlertState& state = alertState();
        std::lock_guard<std::mutex> lock(state.mutex);
        sink = state.sink;
    }
    if (sink) {
        sink(text);
        return;
    }
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        qInfo().noquote() << text;
        return;
    }
    auto* box = new QMessageBox(
        QMessageBox::Information, QGuiApplication::applicationDisplayName(), text, QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::NonModal);
    box->show();
}

} // namespace

void SystemAssistant::messageAlert(const QString& text, QWidget* parent)
{
    {
        AlertState& state = alertState();
        std::lock_guard<std::mutex> lock(state.mutex);
        state.recent.append(text);
        while (state.recent.size() > DictDef::kRecentMessageLimit)
            state.recent.removeFirst();
    }

    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() == app->thread()) {
        showOnGuiThread(text, parent);
        return;
    }
    // The parent may be gone by the time the GUI thread gets to the message.
    QPointer<QWidget> guardedParent(parent);
    QMetaObject::invokeMethod(
        app, [text, guardedParent] { showOnGuiThread(text, guardedParent.data()); }, Qt::QueuedConnection);
}

void SystemAssistant::setMessageSink(MessageSink sink)
{
    AlertState& state = alertState();
    std::lock_guard<std::mutex> lock(state.mutex);
    state.sink = std::move(sink);
}

QStringList SystemAssistant::recentMessages()
{
    AlertState& state = alertState();
    std::lock_guard<std::mutex> lock(state.mutex);
    return state.recent;
}

void SystemAssistant::clearRecentMessages()
{
    AlertState& state = alertState();
    std::lock_guard<std::mutex> lock(state.mutex);
    state.recent.clear();
}

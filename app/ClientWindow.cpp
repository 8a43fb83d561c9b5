#include "ClientWindow.h"

#include "BaseForm.h"
#include "KSingleton.h"
#include "SystemAssistant.h"
#include "SystemMsg.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QTimer>

namespace {

// Time the modules get after the quit notice to send their goodbyes (disconnects) before the
// process ends. The event loop keeps running meanwhile.
constexpr int kQuitGraceMs = 400;
// Boxes left open at once; more would bury the window under a decoder that keeps failing.
constexpr int kMaxOpenBoxes = 5;

} // namespace

ClientWindow::ClientWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setWindowTitle(QGuiApplication::applicationDisplayName());
    resize(1400, 860);
    SystemAssistant::setMessageSink([this](const QString& text) { showMessage(text); });
    auto* quit = new QAction(tr("Quit"), this);
    quit->setShortcut(QKeySequence::Quit);
    quit->setShortcutContext(Qt::ApplicationShortcut);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    addAction(quit);
}

ClientWindow::~ClientWindow()
{
    SystemAssistant::setMessageSink({});
}

void ClientWindow::setPage(kvms_base::BaseForm* page)
{
    page_ = page;
    setCentralWidget(page);
    const auto retitle = [this](const QString& name) {
        const QString program = QGuiApplication::applicationDisplayName();
        setWindowTitle(name.isEmpty() ? program : tr("%1 - %2").arg(name, program));
    };
    connect(page, &kvms_base::BaseForm::signalFormNameChanged, this, retitle);
    retitle(page->formName());
    page->formActivated();
}

void ClientWindow::showMessage(const QString& text)
{
    if (findChildren<QMessageBox*>().size() >= kMaxOpenBoxes)
        return; // still recorded in SystemAssistant::recentMessages()
    auto* box = new QMessageBox(QMessageBox::Information, windowTitle(), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::NonModal);
    box->show();
}

void ClientWindow::closeEvent(QCloseEvent* event)
{
    if (!quitting_) {
        quitting_ = true;
        emit KCOMMON::KSingleton<SystemMsg>::instance()->signalQuitSystem();
        hide();
        QTimer::singleShot(kQuitGraceMs, qApp, &QCoreApplication::quit);
    }
    event->accept();
}

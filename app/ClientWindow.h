#pragma once

#include <QMainWindow>
#include <QPointer>

namespace kvms_base {
class BaseForm;
}

// The host's main window: shows one module page, takes its title from the page, shows the
// operator messages as message boxes, and tells the modules when the client closes.
class ClientWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ClientWindow(QWidget* parent = nullptr);
    ~ClientWindow() override;

    void setPage(kvms_base::BaseForm* page);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void showMessage(const QString& text);

    QPointer<kvms_base::BaseForm> page_;
    bool quitting_ = false;
};

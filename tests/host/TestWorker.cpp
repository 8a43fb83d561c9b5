#include "SuiteMain.h"
#include "SystemAssistant.h"

#include <QApplication>
#include <QMessageBox>
#include <QtTest>

#include <memory>

class TestWorker : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        SystemAssistant::setMessageSink({});
        SystemAssistant::clearRecentMessages();
    }

    void boxIsModelessAndOutlivesItsParent()
    {
        auto* parent = new QWidget;
        const QString text = QStringLiteral("decoder 127.0.0.2 went away");
        std::unique_ptr<QThread> worker(QThread::create([&] { SystemAssistant::messageAlert(text, parent); }));
        worker->start();
        QVERIFY(worker->wait(5000));
        delete parent; // before the GUI thread gets to the message

        QMessageBox* box = nullptr;
        QTRY_VERIFY((box = findBox(text)) != nullptr);
        QVERIFY(box->isVisible());
        QCOMPARE(box->windowModality(), Qt::NonModal);
        QVERIFY(!box->parentWidget());
        box->close();
    }

private:
    static QMessageBox* findBox(const QString& text)
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QMessageBox*>(widget);
            if (box && box->text() == text && box->isVisible())
                return box;
        }
        return nullptr;
    }
};

KVMS_TEST_CLASS(TestWorker)

#include "TestWorker.moc"

#include "SuiteMain.h"
#include "SysPaths.h"
#include "SystemAssistant.h"

#include <QApplication>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

class TestWorker : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        SysPaths::setDataRoot(QString());
        SystemAssistant::setMessageSink({});
        SystemAssistant::clearRecentMessages();
    }

    void matrixDataDirFollowsDataRoot_data()
    {
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("expected");
        QTest::newRow("trailing slash") << QString("root/") << QString("root/matrix");
        QTest::newRow("missing parents") << QString("a/b/c") << QString("a/b/c/matrix");
    }

    void matrixDataDirFollowsDataRoot()
    {
        QFETCH(QString, root);
        QFETCH(QString, expected);
        QTemporaryDir base;
        QVERIFY(base.isValid());

        SysPaths::setDataRoot(base.path() + QLatin1Char('/') + root);
        const QString dir = SysPaths::matrixDataDir();
        QCOMPARE(dir, base.path() + QLatin1Char('/') + expected);
        // Modules create one level below it, so it must exist.
        QVERIFY(QDir(dir).mkdir(QStringLiteral("backgroud_images")));
    }

    void alertReachesSinkOnGuiThread_data()
    {
        QTest::addColumn<bool>("fromWorker");
        QTest::newRow("GUI thread") << false;
        QTest::newRow("worker thread") << true;
    }

    void alertReachesSinkOnGuiThread()
    {
        QFETCH(bool, fromWorker);
        QStringList received;
        QList<QThread*> threads;
        SystemAssistant::setMessageSink([&](const QString& text) {
            received.append(text);
            threads.append(QThread::currentThread());
        });

        const QStringList sent { QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third") };
        auto alertAll = [&sent] {
            for (const QString& text : sent)
                SystemAssistant::messageAlert(text);
        };
        if (fromWorker) {
            std::thread worker(alertAll); // joined: an end the thread checker sees
            worker.join();
            QTRY_COMPARE(received, sent);
        } else {
            alertAll();
            QCOMPARE(received, sent); // served before messageAlert returns
        }
        for (QThread* thread : threads)
            QCOMPARE(thread, qApp->thread());
        QCOMPARE(SystemAssistant::recentMessages(), sent);
        QVERIFY(!findBox(sent.first())); // a sink replaces the box
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

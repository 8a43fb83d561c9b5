#include "SuiteMain.h"
#include "vms_sdk.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>
#include <vector>

using namespace vms_sdk;

namespace {

const QString kStampPattern = QStringLiteral(R"(\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.\d{3})");

QStringList readLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

class TestClientSdk : public QObject {
    Q_OBJECT

private slots:
    void init() { QVERIFY(dir_.isValid()); }

    void cleanupTestCase() { set_log_file(QString()); }

    void concurrentLinesStayWhole()
    {
        const QString path = dir_.filePath(QStringLiteral("threads.log"));
        set_log_file(path);
        const int threadCount = 4;
        const int linesPerThread = 400;
        const QString padding(300, QLatin1Char('x'));
        std::vector<std::thread> threads;
        for (int t = 0; t < threadCount; ++t) {
            threads.emplace_back([=] {
                for (int i = 0; i < linesPerThread; ++i)
                    log_info(QStringLiteral("T%1 L%2").arg(t).arg(i), padding);
            });
        }
        for (auto& thread : threads)
            thread.join();

        const QStringList lines = readLines(path);
        QCOMPARE(lines.size(), threadCount * linesPerThread);
        const QRegularExpression whole(QStringLiteral("^(%1) T(\\d+) L(\\d+) %2$").arg(kStampPattern, padding));
        std::vector<int> next(threadCount, 0);
        QString lastStamp;
        for (const QString& line : lines) {
            const auto match = whole.match(line);
            QVERIFY2(match.hasMatch(), qPrintable(line.left(80)));
            const int t = match.captured(2).toInt();
            QCOMPARE(match.captured(3).toInt(), next[t]++); // each thread's lines in order, none lost
            QVERIFY(match.captured(1) >= lastStamp);
            lastStamp = match.captured(1);
        }
    }

private:
    QTemporaryDir dir_;
};

KVMS_TEST_CLASS(TestClientSdk)

#include "TestClientSdk.moc"

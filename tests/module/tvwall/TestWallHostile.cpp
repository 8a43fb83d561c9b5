// A decoder's numbers are not trusted: answers far past what the wall can hold are refused or
// read within the wall, and a thousand of them cost neither the client nor much memory.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "Messages.h"
#include "PayloadWriter.h"
#include "WireBuilders.h"

#include <QtTest>

#include <malloc.h>

#include <atomic>
#include <thread>

using namespace kvms_matrix;
using cmatrix::wire::MessageType;

namespace {

template <class Body> QByteArray encoded(const Body& body)
{
    std::vector<uint8_t> out;
    cmatrix::wire::PayloadWriter writer(out);
    body.visit(writer);
    return QByteArray(reinterpret_cast<const char*>(out.data()), int(out.size()));
}

cmatrix::wire::WindowList windows(int count, int32_t w, int32_t h)
{
    cmatrix::wire::WindowList list;
    for (int i = 0; i < count; ++i) {
        MatrixWindowStatus_t s {};
        s.window = kvmstest::window(uint32_t(i + 1), 0, 0, w, h);
        list.windows.push_back(s);
    }
    return list;
}

// The highest heap use seen while it lives, above what was in use when it started.
class HeapPeak {
public:
    HeapPeak()
        : base_(inUse())
        , sampler_([this] {
            while (!done_.load()) {
                peak_.store(std::max(peak_.load(), inUse()));
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        })
    {
    }
    ~HeapPeak() { stop(); }
    qint64 stop()
    {
        done_.store(true);
        if (sampler_.joinable())
            sampler_.join();
        return std::max<qint64>(0, peak_.load() - base_);
    }

private:
    static qint64 inUse()
    {
        const struct mallinfo2 m = mallinfo2();
        return qint64(m.uordblks + m.hblkhd);
    }
    const qint64 base_;
    std::atomic<qint64> peak_ { 0 };
    std::atomic<bool> done_ { false };
    std::thread sampler_;
};

} // namespace

class TestWallHostile : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void extremeAnswers_data();
    void extremeAnswers();
    void hostileDecoderStaysBounded();
};

void TestWallHostile::extremeAnswers_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QList<int>>("read"); // rows, cols, windows, cells of the first window

    const int huge = 0x7FFFFFFF;
    QTest::newRow("grid 65535 x 65535") << int(MessageType::GetMatrix)
                                        << encoded(cmatrix::wire::MatrixGeometry { 65535, 65535, "Wall" })
                                        << QList<int> { 16, 16, 4, 64 };
    QTest::newRow("window 0x7FFFFFFF units")
        << int(MessageType::WindowGet) << encoded(windows(1, huge, huge)) << QList<int> { 2, 2, 1, 4 };
    QTest::newRow("more windows than the decoder holds")
        << int(MessageType::WindowGet) << encoded(windows(16 * 16 + 17, 100, 100)) << QList<int> { 2, 2, 0, 0 };
}

void TestWallHostile::extremeAnswers()
{
    QFETCH(int, type);
    QFETCH(QByteArray, payload);
    QFETCH(QList<int>, read);
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    decoder_->faults().answerNextWith(MessageType(type), std::vector<uint8_t>(payload.begin(), payload.end()));
    int rows = 0;
    int cols = 0;
    const QList<MatrixWindowInfo> wall = readWall(h, &rows, &cols);
    QCOMPARE(QList<int>({ rows, cols, wall.size(), wall.isEmpty() ? 0 : wall[0].cells.size() }), read);
    QCOMPARE(readWall(h).size(), 4); // the connection is still good
}

void TestWallHostile::hostileDecoderStaysBounded()
{
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    MatrixSdkWorker* w = worker();
    constexpr int kAnswers = 1000;
    HeapPeak heap;
    decoder_->faults().answerHostile(20261123, kAnswers);
    for (int round = 0; decoder_->faults().hostileAnswersLeft() > 0; ++round) {
        QVERIFY2(round < kAnswers, "the hostile answers are not being asked for");
        readWall(h);
        int rows = 0;
        int cols = 0;
        w->getMatrixWindowInfo(h, rows, cols);
        w->getMatrixScenes(h);
        w->getMatrixLoops(h);
    }
    const qint64 peak = heap.stop();
    qInfo("heap peak over %d hostile answers: %lld KiB", kAnswers, peak / 1024);
    QVERIFY2(peak < 64 * 1024 * 1024, qPrintable(QString::number(peak)));
    QCOMPARE(readWall(h).size(), 4);
}

KVMS_TEST_CLASS(TestWallHostile)
#include "TestWallHostile.moc"

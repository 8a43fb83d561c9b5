#include "KSingleton.h"
#include "KThread.h"
#include "SingletonProbe.h"
#include "SuiteMain.h"

#include <QDeadlineTimer>
#include <QtTest>

#include <atomic>
#include <thread>
#include <vector>

using KCOMMON::KSingleton;

namespace {

constexpr int kThreads = 8;
std::atomic<int> innerConstructions { 0 };
std::atomic<int> slowConstructions { 0 };
std::atomic<int> arrived { 0 }; // threads on their way into instance()

struct InnerSingleton {
    InnerSingleton() { ++innerConstructions; }
};

// Built only once every thread is on its way in, so all of them race for it; and asks for
// another singleton while being built.
struct SlowSingleton {
    SlowSingleton()
    {
        ++slowConstructions;
        QDeadlineTimer deadline(5000);
        while (arrived < kThreads && !deadline.hasExpired())
            std::this_thread::yield();
        inner = KSingleton<InnerSingleton>::instance();
    }
    InnerSingleton* inner = nullptr;
};

} // namespace

class TestCommon : public QObject {
    Q_OBJECT

private slots:
    void singletonIsCreatedOnceAcrossThreads()
    {
        std::vector<SlowSingleton*> seen(kThreads, nullptr);
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&seen, i] {
                ++arrived;
                seen[i] = KSingleton<SlowSingleton>::instance();
            });
        }
        for (auto& thread : threads)
            thread.join();

        QCOMPARE(slowConstructions.load(), 1);
        QCOMPARE(innerConstructions.load(), 1);
        for (SlowSingleton* object : seen)
            QCOMPARE(object, seen.front());
        QVERIFY(seen.front()->inner);
        QCOMPARE(seen.front()->inner, KSingleton<InnerSingleton>::instance());
    }

    void singletonIsSharedWithLibraryThatHidesSymbols()
    {
        ProbeObject* here = KSingleton<ProbeObject>::instance();
        QCOMPARE(probeFromLibrary(), here);
    }

    void threadStopsWhenDestroyedRunning()
    {
        auto* thread = new KCOMMON::KThread;
        thread->start();
        QTRY_VERIFY(thread->isRunning());
        delete thread; // must stop its event loop instead of aborting
    }
};

KVMS_TEST_CLASS(TestCommon)

#include "TestCommon.moc"

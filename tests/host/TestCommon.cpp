#include "KSingleton.h"
#include "KThread.h"
#include "SingletonProbe.h"
#include "SuiteMain.h"

#include <QtTest>

#include <atomic>
#include <thread>
#include <vector>

using KCOMMON::KSingleton;

namespace {

std::atomic<int> innerConstructions { 0 };
std::atomic<int> slowConstructions { 0 };

struct InnerSingleton {
    InnerSingleton() { ++innerConstructions; }
};

// Slow to build and asks for another singleton while being built, to widen the race.
struct SlowSingleton {
    SlowSingleton()
    {
        ++slowConstructions;
        QThread::msleep(30);
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
        const int threadCount = 8;
        std::atomic<bool> go { false };
        std::vector<SlowSingleton*> seen(threadCount, nullptr);
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&go, &seen, i] {
                while (!go.load())
                    std::this_thread::yield();
                seen[i] = KSingleton<SlowSingleton>::instance();
            });
        }
        go = true;
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

#include "TestSuiteMain.h"

#include <QMetaMethod>
#include <QSet>

#include <cstdio>

#include <vector>

namespace kvmstest {

namespace {

int gRan = 0; // test objects run (or listed) so far

// QTest options that take the next argument as their value.
bool takesValue(const QByteArray& option)
{
    static const QSet<QByteArray> options { "-o", "-maxwarnings", "-eventdelay", "-keydelay", "-mousedelay",
        "-platform", "-callgrind", "-perfcounter", "-minimumvalue", "-minimumtotal", "-iterations", "-median",
        "-seed" };
    return options.contains(option);
}

bool declares(const QObject* test, const QByteArray& function)
{
    const QMetaObject* meta = test->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod m = meta->method(i);
        if (m.methodType() == QMetaMethod::Slot && m.name() == function)
            return true;
    }
    return false;
}

// What -functions prints, for one object: QTest would print it for the first and end the process.
void printFunctions(const QObject* test)
{
    const QMetaObject* meta = test->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod m = meta->method(i);
        const QByteArray name = m.name();
        if (m.methodType() != QMetaMethod::Slot || m.access() != QMetaMethod::Private || m.parameterCount() != 0
            || name.endsWith("_data") || name == "init" || name == "cleanup" || name == "initTestCase"
            || name == "cleanupTestCase")
            continue;
        printf("%s()\n", name.constData());
    }
}

} // namespace

int runTestObject(QObject* test, int argc, char** argv)
{
    std::vector<char*> kept { argv[0] };
    bool named = false;
    bool mine = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-functions") {
            printFunctions(test);
            ++gRan;
            return 0;
        }
        if (arg.startsWith('-')) {
            kept.push_back(argv[i]);
            if (takesValue(arg) && i + 1 < argc)
                kept.push_back(argv[++i]);
            continue;
        }
        named = true;
        const int colon = arg.indexOf(':');
        if (declares(test, colon < 0 ? arg : arg.left(colon))) {
            mine = true;
            kept.push_back(argv[i]);
        }
    }
    if (named && !mine)
        return 0;
    ++gRan;
    return QTest::qExec(test, int(kept.size()), kept.data());
}

int runSuite(int argc, char** argv, std::initializer_list<TestRun> runs)
{
    prepareEnvironment();
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    int failures = 0;
    for (TestRun run : runs)
        failures += run(argc, argv);
    if (gRan == 0) {
        // A misspelt function name would otherwise pass without running anything.
        fprintf(stderr, "No test class of this suite declares the functions named.\n");
        return 1;
    }
    return failures;
}

} // namespace kvmstest

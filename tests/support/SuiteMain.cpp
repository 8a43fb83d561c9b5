#include "SuiteMain.h"

#include <QMetaMethod>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QtTest>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kvmstest {

namespace {

using Key = std::pair<int, std::string>; // rank, class name
int gRan = 0; // objects that ran

std::map<Key, TestFactory>& registry()
{
    static std::map<Key, TestFactory> classes;
    return classes;
}

// QTest options that take the next argument as their value.
bool takesValue(const QByteArray& option)
{
    static const QSet<QByteArray> options { "-o", "-maxwarnings", "-eventdelay", "-keydelay", "-mousedelay",
        "-platform", "-callgrind", "-perfcounter", "-minimumvalue", "-minimumtotal", "-iterations", "-median",
        "-seed" };
    return options.contains(option);
}

bool isTestFunction(const QMetaMethod& m)
{
    const QByteArray name = m.name();
    return m.methodType() == QMetaMethod::Slot && m.access() == QMetaMethod::Private && m.parameterCount() == 0
        && !name.endsWith("_data") && name != "init" && name != "cleanup" && name != "initTestCase"
        && name != "cleanupTestCase";
}

bool declares(const QObject* test, const QByteArray& function)
{
    const QMetaObject* meta = test->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        if (isTestFunction(meta->method(i)) && meta->method(i).name() == function)
            return true;
    return false;
}

} // namespace

bool registerTestClass(const char* name, int rank, TestFactory create)
{
    registry()[{ rank, name }] = std::move(create);
    return true;
}

int runTestObject(QObject* test, int argc, char** argv)
{
    std::vector<char*> kept { argv[0] };
    bool named = false;
    bool mine = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
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

int runTestClasses(int argc, char** argv)
{
    QStringList only;
    std::vector<char*> args;
    for (int i = 0; i < argc; ++i) {
        if (QByteArray(argv[i]) == "-class" && i + 1 < argc)
            only = QString::fromLocal8Bit(argv[++i]).split(QLatin1Char(','), Qt::SkipEmptyParts);
        else
            args.push_back(argv[i]);
    }
    QStringList known;
    for (const auto& entry : registry())
        known << QString::fromStdString(entry.first.second);
    for (const QString& name : only) {
        if (!known.contains(name)) {
            qWarning("No test class %s", qPrintable(name));
            return 1;
        }
    }
    int failures = 0;
    for (const auto& entry : registry()) {
        if (!only.isEmpty() && !only.contains(QString::fromStdString(entry.first.second)))
            continue;
        std::unique_ptr<QObject> test(entry.second());
        failures += runTestObject(test.get(), int(args.size()), args.data());
    }
    if (gRan == 0) { // a misspelt function name would otherwise pass without running anything
        fprintf(stderr, "No test class of this suite declares the functions named.\n");
        return 1;
    }
    return std::min(failures, 127); // stays a failing exit status
}

} // namespace kvmstest

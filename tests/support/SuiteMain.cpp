#include "SuiteMain.h"

#include <QObject>
#include <QStringList>
#include <QtTest>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kvmstest {

namespace {

std::map<std::string, TestFactory>& registry()
{
    static std::map<std::string, TestFactory> classes;
    return classes;
}

} // namespace

bool registerTestClass(const char* name, TestFactory create)
{
    registry()[name] = std::move(create);
    return true;
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
    for (const QString& name : only) {
        if (!registry().count(name.toStdString())) {
            qWarning("No test class %s", qPrintable(name));
            return 1;
        }
    }
    int failures = 0;
    for (const auto& entry : registry()) {
        if (!only.isEmpty() && !only.contains(QString::fromStdString(entry.first)))
            continue;
        std::unique_ptr<QObject> test(entry.second());
        failures += QTest::qExec(test.get(), int(args.size()), args.data());
    }
    return std::min(failures, 127); // stays a failing exit status
}

} // namespace kvmstest

// The plug-in as its host sees it: exactly the entry function and the five media frame
// functions are exported, under their plain C names, and they work when resolved by name.
#include "SuiteMain.h"

#include "KavFrame.h"

#include <QProcess>
#include <QSet>
#include <QtTest>

#include <dlfcn.h>

class TestExports : public QObject {
    Q_OBJECT

private slots:
    void exportsAreExactlyTheCFunctions()
    {
        QProcess nm;
        nm.start(QStringLiteral("nm"), { QStringLiteral("-D"), QStringLiteral("--defined-only"), KVMS_MATRIX_PLUGIN });
        QVERIFY(nm.waitForFinished(30000));
        QCOMPARE(nm.exitCode(), 0);
        QSet<QString> exported;
        for (const QByteArray& line : nm.readAllStandardOutput().split('\n')) {
            const QList<QByteArray> fields = line.simplified().split(' ');
            // "address type name"; lower-case types are local and not visible to the host.
            if (fields.size() == 3 && fields[1].size() == 1 && QChar(fields[1][0]).isUpper())
                exported.insert(QString::fromLatin1(fields[2]));
        }
        const QSet<QString> expected { "kvms_module_entry", "KavCalcFrameHeaderSize", "KavCalcFrameSize",
            "KavPackFrameHeader", "KavPackFrame", "KavUnpackFrame" };
        QCOMPARE(exported, expected);
    }

    void functionsResolveByTheirCNames()
    {
        void* plugin = dlopen(KVMS_MATRIX_PLUGIN, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(plugin, dlerror());
        const auto headerSize
            = reinterpret_cast<decltype(&KavCalcFrameHeaderSize)>(dlsym(plugin, "KavCalcFrameHeaderSize"));
        const auto frameSize = reinterpret_cast<decltype(&KavCalcFrameSize)>(dlsym(plugin, "KavCalcFrameSize"));
        const auto packHeader = reinterpret_cast<decltype(&KavPackFrameHeader)>(dlsym(plugin, "KavPackFrameHeader"));
        const auto pack = reinterpret_cast<decltype(&KavPackFrame)>(dlsym(plugin, "KavPackFrame"));
        const auto unpack = reinterpret_cast<decltype(&KavUnpackFrame)>(dlsym(plugin, "KavUnpackFrame"));
        QVERIFY(headerSize && frameSize && packHeader && pack && unpack);
        QVERIFY(dlsym(plugin, "kvms_module_entry"));

        QCOMPARE(headerSize(250), 32);
        dlclose(plugin);
    }
};

KVMS_TEST_CLASS(TestExports)
#include "TestExports.moc"

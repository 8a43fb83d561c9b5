// The plug-in as its host sees it: exactly the entry function and the five media frame
// functions are exported, under their plain C names.
#include "SuiteMain.h"

#include <QProcess>
#include <QSet>
#include <QtTest>

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

};

KVMS_TEST_CLASS(TestExports)
#include "TestExports.moc"

// Loops turn on the decoder's own clock, each at its scheme's interval.

#include "SuiteMain.h"
#include "TestTimeout.h"
#include "WallRecords.h"

#include <QtTest>

using namespace wallrecords;
using kvmstest::scaled;

class TestLoops : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void loopTurnsAtItsInterval()
    {
        kvmstest::SdkSession sdk;
        vdec::VirtualDecoder* d = standardWall(fixture_, sdk, 100);
        QVERIFY(d);
        const CMHANDLE h = sdk.handle();
        const SchemeInfo_t slow = scheme(2, "Slow", 10);
        QCOMPARE(CMatrix_SchemeSet(h, &slow), CMATRIX_OK);
        SchemeDevice_t sources[] = { schemeSource("loop-0"), schemeSource("loop-1") };
        QCOMPARE(CMatrix_SchemeAddDevices(h, 2, sources, 2, true), CMATRIX_OK);

        QCOMPARE(CMatrix_SchemeSelect(h, 1, 2, 0), CMATRIX_OK); // a step a second (100 ms a unit)
        QCOMPARE(CMatrix_SchemeSelect(h, 3, 1, 0), CMATRIX_OK); // ten steps a second
        QTRY_VERIFY_WITH_TIMEOUT(turnOf(d, 3) >= 1, scaled(3000));
        QCOMPARE(turnOf(d, 1), 0);
        QTRY_VERIFY_WITH_TIMEOUT(turnOf(d, 1) >= 1, scaled(5000));
        QVERIFY2(turnOf(d, 3) >= 4, qPrintable(QString("fast loop at turn %1").arg(turnOf(d, 3))));
    }
};

KVMS_TEST_CLASS(TestLoops)
#include "TestLoops.moc"

#include "ModuleInitialization.h"
#include "SuiteMain.h"

#include <QApplication>
#include <QtTest>

namespace {

class StyledModule : public ModuleInitialization {
public:
    using ModuleInitialization::loadStyleSheet;
};

} // namespace

class TestModuleBase : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qApp->setStyleSheet(QString()); }

    void loadStyleSheetResult_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("loaded");
        QTest::newRow("resource") << ":/host_test/green_panel.qss" << true;
        QTest::newRow("missing resource") << ":/host_test/absent.qss" << false;
    }

    void loadStyleSheetResult()
    {
        QFETCH(QString, path);
        QFETCH(bool, loaded);
        const QString before = QStringLiteral("QLabel { color: blue; }");
        qApp->setStyleSheet(before);

        StyledModule module;
        QCOMPARE(module.loadStyleSheet(path), loaded);
        QVERIFY(qApp->styleSheet().startsWith(before)); // never replaces what others loaded
        QCOMPARE(qApp->styleSheet().contains(QStringLiteral("#hostTestPanel")), loaded);
    }
};

KVMS_TEST_CLASS(TestModuleBase)

#include "TestModuleBase.moc"

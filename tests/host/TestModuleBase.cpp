#include "HostTests.h"

#include "KWidget.h"
#include "ModuleInitialization.h"

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
        QTest::newRow("missing prefix") << ":/nowhere/green_panel.qss" << false;
        QTest::newRow("empty path") << "" << false;
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

    void sheetsOfSeveralModulesAccumulate()
    {
        StyledModule first;
        StyledModule second;
        QVERIFY(first.loadStyleSheet(QStringLiteral(":/host_test/green_panel.qss")));
        QVERIFY(second.loadStyleSheet(QStringLiteral(":/host_test/label_font.qss")));
        QVERIFY(first.loadStyleSheet(QStringLiteral(":/host_test/green_panel.qss")));

        const QString sheet = qApp->styleSheet();
        QCOMPARE(sheet.count(QStringLiteral("#hostTestPanel")), 1);
        QCOMPARE(sheet.count(QStringLiteral("#hostTestLabel")), 1);

        QWidget window;
        window.resize(40, 40);
        auto* panel = new KCOMMON::KWidget(&window);
        panel->setObjectName(QStringLiteral("hostTestPanel"));
        panel->setGeometry(10, 10, 20, 20);
        QCOMPARE(window.grab().toImage().pixelColor(20, 20), QColor(0, 255, 0));
    }
};

QObject* createModuleBaseTests()
{
    return new TestModuleBase;
}

#include "TestModuleBase.moc"

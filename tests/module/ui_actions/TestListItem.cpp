// The scene and loop rows: renaming by keys or a click beside the field, the loop row's drag.
#include "ActionsTests.h"
#include "TestMain.h"

#include "MatrixListItem.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

using namespace kvms_matrix;

void ListItemTest::renameKeys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("empty"); // the empty name is reported at once
    QTest::addColumn<bool>("finished"); // renaming ended with the new name
    QTest::newRow("space in an emptied field") << "" << int(Qt::Key_Space) << true << false;
    QTest::newRow("space in a blank field") << "   " << int(Qt::Key_Space) << true << false;
    QTest::newRow("space after a name") << "Night" << int(Qt::Key_Space) << false << false;
    QTest::newRow("letter in an emptied field") << "" << int(Qt::Key_A) << false << false;
    QTest::newRow("return") << "Night shift" << int(Qt::Key_Return) << false << true;
    QTest::newRow("keypad enter") << "Night shift" << int(Qt::Key_Enter) << false << true;
    QTest::newRow("click beside the field") << "Day 夜班 \"B\"" << 0 << false << true;
}

void ListItemTest::renameKeys()
{
    QFETCH(QString, text);
    QFETCH(int, key);
    QFETCH(bool, empty);
    QFETCH(bool, finished);
    MatrixListItem item(3, QStringLiteral("Day"), QStringLiteral(":/matrix_images/images/scene_n.png"), true);
    item.resize(220, 28);
    item.show();
    QVERIFY(QTest::qWaitForWindowExposed(&item));
    QSignalSpy emptied(&item, &MatrixListItem::signalNameEmpty);
    QSignalSpy renamed(&item, &MatrixListItem::signalEditItemName);
    QTest::mouseClick(item.editButton(), Qt::LeftButton);
    QVERIFY(item.nameEdit()->isVisible() && !item.nameLabel()->isVisible());
    item.nameEdit()->setText(text);
    if (key)
        QTest::keyClick(item.nameEdit(), Qt::Key(key));
    else
        QTest::mouseClick(&item, Qt::LeftButton, {}, QPoint(2, 14));
    QCOMPARE(emptied.count(), empty ? 1 : 0);
    QCOMPARE(renamed.count(), finished ? 1 : 0);
    QCOMPARE(item.nameEdit()->isVisible(), !finished);
    QCOMPARE(item.nameLabel()->isVisible(), finished);
    if (finished)
        QCOMPARE(renamed.first().mid(1), QList<QVariant>({ QStringLiteral("Day"), text }));
}

#include "CanvasFixture.h"

#include "ControlMatrixWt.h"
#include "SystemAssistant.h"

#include <QtTest>

namespace canvastest {

using kvms_matrix::MatrixWindowInfo;

MatrixWindowInfo window(int id, int x, int y, int w, int h, int division, int type)
{
    MatrixWindowInfo info;
    info.windowId = id;
    info.windowIndex = id - 1;
    info.x = x;
    info.y = y;
    info.w = w;
    info.h = h;
    info.division = division;
    info.windowType = type;
    for (int k = 0; k < division; ++k) {
        kvms_matrix::MatrixSubWindowInfo sub;
        sub.subWindowId = type == 2 ? -1 : k + 1;
        sub.subWindowIndex = k;
        info.subWindows.append(sub);
    }
    return info;
}

MatrixWindowInfo cellWindow(int id, int rows, int cols, int division)
{
    const int unitW = 32768 / cols;
    const int unitH = 32768 / rows;
    return window(id, (id - 1) % cols * unitW, (id - 1) / cols * unitH, unitW, unitH, division);
}

MatrixWindowInfo splicedWindow(int id, int spanRows, int spanCols, int rows, int cols, int division)
{
    const int unitW = 32768 / cols;
    const int unitH = 32768 / rows;
    MatrixWindowInfo info
        = window(id, (id - 1) % cols * unitW, (id - 1) / cols * unitH, spanCols * unitW, spanRows * unitH, division, 1);
    info.spanRows = spanRows;
    info.spanCols = spanCols;
    for (int i = 0; i < spanRows; ++i) {
        for (int j = 0; j < spanCols; ++j)
            info.cells.append({ id + i * cols + j, i, j });
    }
    return info;
}

QList<MatrixWindowInfo> cellWall(int rows, int cols, int division)
{
    QList<MatrixWindowInfo> list;
    for (int id = 1; id <= rows * cols; ++id)
        list.append(cellWindow(id, rows, cols, division));
    return list;
}

void showCanvas(kvms_matrix::ControlMatrixWt& canvas, const QSize& size)
{
    canvas.resize(size);
    canvas.show();
    QVERIFY(QTest::qWaitForWindowExposed(&canvas));
}

void muteMessages()
{
    SystemAssistant::clearRecentMessages();
    SystemAssistant::setMessageSink([](const QString&) {});
}

void unmuteMessages()
{
    SystemAssistant::setMessageSink({});
}

} // namespace canvastest

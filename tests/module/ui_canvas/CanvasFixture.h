#pragma once

#include "MatrixWindowInfo.h"

#include <QList>
#include <QSize>

namespace kvms_matrix {
class ControlMatrixWt;
}

namespace canvastest {

// A window of a rows x cols wall: the one-cell window of cell `id`, divided in `division`.
kvms_matrix::MatrixWindowInfo cellWindow(int id, int rows, int cols, int division = 1);
// A window with the given rectangle in wall units and `division` sub-windows.
kvms_matrix::MatrixWindowInfo window(int id, int x, int y, int w, int h, int division, int type = 0);
// A spliced window over spanRows x spanCols cells of a rows x cols wall from the cell `id`.
kvms_matrix::MatrixWindowInfo splicedWindow(int id, int spanRows, int spanCols, int rows, int cols, int division);
// Every cell of a rows x cols wall as its own window.
QList<kvms_matrix::MatrixWindowInfo> cellWall(int rows, int cols, int division = 1);

// A shown canvas of the given size whose layout has run.
void showCanvas(kvms_matrix::ControlMatrixWt& canvas, const QSize& size);

// No message box while a test runs: what the operator would be told is only recorded, and read
// with SystemAssistant::recentMessages(). Muting clears that record.
void muteMessages();
void unmuteMessages();

} // namespace canvastest

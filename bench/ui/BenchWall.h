#pragma once

#include "MatrixWindowInfo.h"

#include <QList>
#include <QString>

#include <vector>

// What the canvas benchmarks share: a full wall to lay out and the median of timed samples.
namespace benchwall {

// side x side windows covering the wall, each divided in `division` with a camera in every
// sub-window named "<prefix> <window>-<sub-window>".
QList<kvms_matrix::MatrixWindowInfo> wall(int side, int division, const QString& prefix);

double median(std::vector<double> samples);

} // namespace benchwall

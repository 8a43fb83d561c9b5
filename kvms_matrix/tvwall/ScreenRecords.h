#pragma once

#include "MatrixInfo.h"

#include "CMatrixSDK.h"

#include <QList>
#include <QMap>
#include <QString>

#include <vector>

namespace kvms_matrix {

// The screens of a layout as the decoder stores them (ScreenInfo_t) and back. The stored
// screen list holds one entry per decoder of the wall; each screen of its screen list is one
// record, named after the screen's id ("<decoder address>-<n>"), so that reading the records
// back gives the same entries. An entry without screens stands for one screen at its location.
class ScreenRecords {
public:
    // The decoder address a screen entry belongs to: its id up to the first '-', or the
    // entry's address when the id carries none.
    static QString addressOf(const QString& screenId, const QString& fallback);
    // `known` (the worker's decoders by address) gives port, user name and password.
    static std::vector<ScreenInfo_t> toRecords(
        const QList<MatrixInfo>& entries, const QMap<QString, MatrixInfo>& known);
    // Records grouped back into one entry per decoder address, in the order first seen.
    static QList<MatrixInfo> fromRecords(const ScreenInfo_t* records, int count);
    // Every decoder address the entries name, in order, each once.
    static QStringList addresses(const QList<MatrixInfo>& entries);
    // The records as the call log writes them.
    static QString logText(const std::vector<ScreenInfo_t>& records);
};

} // namespace kvms_matrix

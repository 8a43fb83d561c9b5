#pragma once

// What the suites that drive the worker against virtual decoders share: the worker singleton,
// a login through it, a window record as the forms hold it, the call log, and a working
// directory of their own (the INI mirror and the log are opened by bare name). Compiled into
// each such suite (an interface source of kvms_worker_test_support), since it needs the worker.

#include "MatrixSdkWorker.h"

#include <QSharedPointer>
#include <QString>
#include <QTemporaryDir>

namespace vdec {
class VirtualDecoder;
}

namespace kvmstest {

class WorkerSuite {
public:
    using Handle = QSharedPointer<kvms_matrix::CSharedHandle>;

    static kvms_matrix::MatrixSdkWorker* worker();
    // The decoder's admin login, with its own password unless another is given.
    static kvms_matrix::MatrixInfo infoOf(const vdec::VirtualDecoder* decoder, const QString& password = {});
    // Connects through the worker as admin and waits for the result; null on a failed login or
    // timeout, with the result's code in `ret` when one came.
    static Handle connectWorker(const vdec::VirtualDecoder* decoder, int* ret = nullptr);
    // Window `id` of `division` sub-windows, numbered from 1, with no sources.
    static kvms_matrix::MatrixWindowInfo windowInfo(int id, int division);
    static QString logText();

protected:
    // For initTestCase: enters the suite's own directory and logs there.
    bool enterWorkDirectory();
    // For cleanup: stops the capture, disconnects everything and waits for the queue to empty;
    // forgets the INI mirror.
    bool settleWorker();
    // For cleanupTestCase: stops the worker and returns to the previous directory.
    bool leaveWorkDirectory();

    QTemporaryDir workDir_;

private:
    QString previousDir_;
};

} // namespace kvmstest

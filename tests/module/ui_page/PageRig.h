#pragma once

#include <QString>
#include <QTemporaryDir>

namespace kvms_matrix {
class MainMatrixForm;
}

// The main page and the TV wall page on the offscreen platform, driven with crafted results;
// decoders, where one is needed, are an address where nothing listens. The page's files live
// in a temporary working directory.
class PageRig {
public:
    // Nothing listens here: a login fails at once with a refused connection.
    static QString nowhere() { return QStringLiteral("127.0.0.9"); }
    // A wall page whose one decoder (nowhere()) failed its first login and retries no more.
    static void settledWallPage(kvms_matrix::MainMatrixForm& form);

protected:
    bool setUp(); // for initTestCase
    void clearFiles(); // for init
    void tearDown(); // for cleanupTestCase: stops the worker

private:
    QTemporaryDir dir_;
    QString previous_;
};

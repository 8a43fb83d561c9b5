#pragma once

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

namespace kvms_matrix {
class MatrixForm;
}
namespace vdec {
class VirtualDecoder;
}

// The canvas's menu and keys on a canvas given crafted windows (no decoder).
class CanvasActionsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void menuSendsTheCodeOfEachEntry_data();
    void menuSendsTheCodeOfEachEntry();
    void divisionLeavesFullDisplayFirst();
    void keysClearAndLeaveFull();
};

// The page against one virtual decoder: what the operator does ends on the decoder.
class PageActionsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void dropsBindTheTreeItem_data();
    void dropsBindTheTreeItem();
    void menuCodesOnTheDecoder_data();
    void menuCodesOnTheDecoder();
    void backgroundPictureRules_data();
    void backgroundPictureRules();
    void grabScreenFollowsTheCaptureSettings_data();
    void grabScreenFollowsTheCaptureSettings();
    void joinAndUnjoinCells();
    void scenesSaveRenameAndRecall();
    void sceneLimit();
    void refusedSceneSaveAndRenameKey();
    void loopMadeInTheDialogTurnsWhereDropped();
    void bannerPutUpAndMoved();
    void usbFilePlayedInTheSelectedWindow();
    void hdmiInputAndScreenColour();

private:
    QTemporaryDir dir_;
    QString previous_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    kvms_matrix::MatrixForm* page_ = nullptr;
};

namespace actionstest {
// Messages given to the operator since the last clear.
QStringList messages();
void clearMessages();
} // namespace actionstest

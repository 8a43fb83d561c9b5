#pragma once

#include <QObject>

class CanvasTests : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // geometry
    void panelRects_data();
    void panelRects();
    void conversions_data();
    void conversions();
    void floatingCreation();
    void moveBounds_data();
    void moveBounds();

    // canvas
    void panelsFollowDivision_data();
    void panelsFollowDivision();
    void fullSubWindow();
    void bannerPlacement_data();
    void bannerPlacement();
    void splicedReplacesCells();
    void emptyWallPlacesNothing();
    void hostileWallIsBounded();
    void drops_data();
    void drops();
    void bannerDrag();

    // floating windows
    void createFloating();
    void dragFloating_data();
    void dragFloating();
    void resizeFloating();
    void dropOnFloating_data();
    void dropOnFloating();
};

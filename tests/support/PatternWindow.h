#pragma once

#include <QColor>
#include <QWidget>

// A frameless window over a whole screen, painted in four coloured quadrants: a desktop whose
// picture is known, to be recognised wherever the capture shows it.
class PatternWindow : public QWidget {
public:
    static const QColor kTopLeft, kTopRight, kBottomLeft, kBottomRight;

    PatternWindow();
    // Covers the primary screen and waits until it is shown; false if it never was.
    bool showOverScreen();
    // The colour expected at (fx, fy), fractions of the screen's width and height.
    static QColor colourAt(double fx, double fy);

protected:
    void paintEvent(QPaintEvent* event) override;
};

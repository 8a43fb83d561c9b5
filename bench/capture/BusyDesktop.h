#pragma once

#include <QWidget>

// A full-screen window that looks like a working desktop (gradient, windows with title bars,
// many lines of text, coloured shapes), so that JPEG has a realistic amount to encode.
class BusyDesktop : public QWidget {
public:
    BusyDesktop();

protected:
    void paintEvent(QPaintEvent* event) override;
};

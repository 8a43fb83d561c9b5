#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

class QPainter;

// Draws the canvas's menu and list icons: light strokes on a transparent 20 x 20 square, for
// the module's dark menus. Each icon is drawn from lines and shapes, so the pictures need no
// source files and look the same on every machine.
class MenuIconPainter {
public:
    static constexpr int kSize = 20;

    // Every icon the module uses, by file name without ".png".
    static QStringList names();
    // A null image for an unknown name.
    static QImage draw(const QString& name);

private:
    static void drawDivision(QPainter& p, int division);
    static void drawBadge(QPainter& p, const QString& text);
    static void drawSpeaker(QPainter& p, bool on);
    static void drawCorners(QPainter& p, bool outward);
    static void drawReplay(QPainter& p, bool exit);
};

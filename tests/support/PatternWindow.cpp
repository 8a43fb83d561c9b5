#include "PatternWindow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QtTest>

const QColor PatternWindow::kTopLeft(220, 30, 30);
const QColor PatternWindow::kTopRight(30, 190, 40);
const QColor PatternWindow::kBottomLeft(20, 20, 235);
const QColor PatternWindow::kBottomRight(235, 215, 20);

PatternWindow::PatternWindow()
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

bool PatternWindow::showOverScreen()
{
    setGeometry(QGuiApplication::primaryScreen()->geometry());
    show();
    return QTest::qWaitForWindowExposed(this);
}

QColor PatternWindow::colourAt(double fx, double fy)
{
    if (fy < 0.5)
        return fx < 0.5 ? kTopLeft : kTopRight;
    return fx < 0.5 ? kBottomLeft : kBottomRight;
}

void PatternWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const int w = width() / 2;
    const int h = height() / 2;
    painter.fillRect(0, 0, w, h, kTopLeft);
    painter.fillRect(w, 0, width() - w, h, kTopRight);
    painter.fillRect(0, h, w, height() - h, kBottomLeft);
    painter.fillRect(w, h, width() - w, height() - h, kBottomRight);
}

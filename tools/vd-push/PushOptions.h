#pragma once

#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

// What vd-push is asked to do.
struct PushOptions {
    QString address;
    quint16 port = 0;
    QString user = QStringLiteral("admin");
    QString password = QStringLiteral("admin123");
    int windowId = 1;
    int sub = 1;
    int division = 4; // for a window vd-push has to make
    QRect rect { 0, 0, 32768, 32768 }; // of that window, wall units
    bool floating = false;
    QSize grid; // screens of the wall, columns x rows; empty: left alone
    QString picture; // JPEG file; empty: a generated test card
    QString name = QStringLiteral("Pushed picture");
    QString banner; // empty: the banner is left alone
    bool hideBanner = false;

    // False with a message in *error; --help prints and exits from inside.
    static bool parse(const QStringList& arguments, PushOptions& out, QString* error);
};

#pragma once

#include <QColor>
#include <QString>

namespace kvms_matrix {

// "tvWallConfig.ini": group "info" (the decoder last logged in to and the projection settings)
// and group "bannerinfo" (a mirror of the banner on the wall, so the forms can show it without
// asking the decoder). Each call opens the file, touches its group and writes it back on return.
class TvWallIni {
public:
    struct Login {
        int type = -1;
        QString ip;
        int port = -1;
        QString username;
        QString password;
    };

    struct Projection {
        bool isSoftwareProject = true; // no projection device configured yet
        QString devIp;
        QString devUser;
        QString devPwd;
    };

    // Colours are kept as "#rrggbb"; a width of 0 means that no banner is shown.
    struct Banner {
        QString message;
        int direction = 0;
        int speed = 0;
        int fontPercent = 0;
        QColor fontColor;
        QColor backColor;
        int x = 0;
        int y = 0;
        int w = 0;
        int h = 0;
    };

    static QString fileName();

    // User name and password are stored as Base64 of their UTF-8 bytes; the ip is trimmed on read.
    static Login readLogin();
    static void writeLogin(const Login& login);

    static Projection readProjection();
    static void writeProjection(const Projection& projection);

    // Missing keys read as 0, an empty message and invalid colours.
    static Banner readBanner();
    // All ten keys; `withFontPercent` false keeps the stored "fontPercent" (a decoder banner of
    // height 0 gives no percentage to store).
    static void writeBanner(const Banner& banner, bool withFontPercent = true);
    // The banner was taken off the wall: x, y, w, h become 0, the rest is kept for the next one.
    static void zeroBannerRect();
};

} // namespace kvms_matrix

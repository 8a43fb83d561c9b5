// Writes the module's icons as PNG files into the folder given as the only argument.

#include "MenuIconPainter.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_DIR\n", argv[0]);
        return 2;
    }
    // Text needs the font database, which needs a GUI application; no display is used.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QDir out(QString::fromLocal8Bit(argv[1]));
    if (!QDir().mkpath(out.path()))
        return 1;
    for (const QString& name : MenuIconPainter::names()) {
        if (!MenuIconPainter::draw(name).save(out.filePath(name + QStringLiteral(".png")))) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(name));
            return 1;
        }
    }
    return 0;
}

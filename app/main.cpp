// The operator program: a small host shell around the TV-wall module plug-in.
#include "ClientOptions.h"
#include "ClientWindow.h"
#include "HostCatalogue.h"
#include "ModuleLoader.h"

#include "BaseForm.h"
#include "LogInfo.h"
#include "SysPaths.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QScreen>
#include <QTranslator>

#include <cstdio>

namespace {

int fail(const QString& text)
{
    std::fprintf(stderr, "kvms-client: %s\n", qPrintable(text));
    return 1;
}

// The module's texts ship as translations/kvms_matrix_<lang>.qm beside the plug-in; Qt's own
// dialogs (buttons of message boxes) come from Qt's translations.
void installTranslations(QApplication& app, const QString& language)
{
    auto* qt = new QTranslator(&app);
    if (qt->load(QStringLiteral("qt_") + language, QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        app.installTranslator(qt);
    auto* module = new QTranslator(&app);
    if (module->load(QStringLiteral("kvms_matrix_") + language,
            QCoreApplication::applicationDirPath() + QStringLiteral("/translations")))
        app.installTranslator(module);
    else
        std::fprintf(stderr, "kvms-client: no translation for %s, showing the source texts\n", qPrintable(language));
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    ClientOptions options;
    QString error;
    {
        QCoreApplication probe(argc, argv); // for --help/--version and the application name
        QCoreApplication::setApplicationName(QStringLiteral("kvms-client"));
        QCoreApplication::setApplicationVersion(QStringLiteral(PROJECT_VERSION));
        if (!ClientOptions::parse(arguments, options, &error))
            return fail(error);
    }
    // The SDK reads its discovery targets once, when the plug-in first searches.
    if (!options.discoveryTargets.isEmpty())
        qputenv("CMATRIX_DISCOVERY_TARGETS", options.discoveryTargets.toLocal8Bit());

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kvms-client"));
    QApplication::setApplicationDisplayName(QStringLiteral("kvms"));
    if (!options.language.isEmpty())
        installTranslations(app, options.language);

    // The module opens its files by bare name: the program runs inside its data directory.
    if (!QDir().mkpath(options.dataDir) || !QDir::setCurrent(options.dataDir))
        return fail(QStringLiteral("cannot use %1 as data directory").arg(options.dataDir));
    SysPaths::setDataRoot(options.dataDir);
    vms_sdk::set_log_file(QDir(options.dataDir).filePath(QStringLiteral("kvms_client.log")));

    if (!options.catalogue.isEmpty() && !HostCatalogue::load(options.catalogue, &error))
        return fail(QStringLiteral("catalogue %1: %2").arg(options.catalogue, error));

    ModuleLoader loader;
    const QString plugin = options.pluginPath.isEmpty()
        ? QCoreApplication::applicationDirPath() + QStringLiteral("/libkvms_matrix.so")
        : options.pluginPath;
    if (!loader.load(plugin)) {
        QMessageBox::critical(nullptr, QStringLiteral("kvms"), loader.error());
        return fail(loader.error());
    }
    kvms_base::BaseForm* page = loader.createPage();
    if (!page)
        return fail(QStringLiteral("the module has no page"));

    ClientWindow window;
    window.setPage(page);
    // A control-room program takes the whole screen; on a display without a window manager
    // (the virtual screen of the demo) maximising alone would do nothing.
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        window.resize(screen->availableGeometry().size());
    window.showMaximized();
    std::fprintf(stdout, "kvms-client: data in %s\n", qPrintable(options.dataDir));
    std::fflush(stdout);
    return app.exec();
}

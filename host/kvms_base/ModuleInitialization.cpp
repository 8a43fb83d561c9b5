#include "ModuleInitialization.h"

#include <QApplication>
#include <QFile>

ModuleInitialization::ModuleInitialization(QObject* parent)
    : QObject(parent)
{
}

ModuleInitialization::~ModuleInitialization() = default;

void ModuleInitialization::moduleInit() { }

void ModuleInitialization::recoveryToInitialState() { }

kvms_base::BaseForm* ModuleInitialization::createForm()
{
    return nullptr;
}

bool ModuleInitialization::loadStyleSheet(const QString& resourcePath)
{
    auto* app = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!app || resourcePath.isEmpty())
        return false;
    QFile file(resourcePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QString sheet = QString::fromUtf8(file.readAll());
    if (sheet.trimmed().isEmpty())
        return true;

    // A module initialised twice must not stack its rules twice.
    const QString current = app->styleSheet();
    if (current.contains(sheet))
        return true;
    app->setStyleSheet(current.isEmpty() ? sheet : current + QLatin1Char('\n') + sheet);
    return true;
}

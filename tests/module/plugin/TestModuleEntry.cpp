// The plug-in as the host loads it: a shared library with one entry function.
#include "TestMain.h"

#include "BaseForm.h"
#include "ModuleInitialization.h"
#include "SysPaths.h"

#include <QDir>
#include <QLibrary>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestModuleEntry : public QObject {
    Q_OBJECT

    QTemporaryDir dataRoot_;
    QLibrary plugin_ { QStringLiteral(KVMS_MATRIX_PLUGIN) };
    ModuleInitialization* entry_ = nullptr;

private slots:
    void initTestCase()
    {
        QVERIFY(dataRoot_.isValid());
        SysPaths::setDataRoot(dataRoot_.path());
    }

    void loadsWithEverySymbolResolved()
    {
        // Resolving everything at load time catches an SDK function the module calls but the
        // SDK does not have.
        plugin_.setLoadHints(QLibrary::ResolveAllSymbolsHint);
        QVERIFY2(plugin_.load(), qPrintable(plugin_.errorString()));
        using Entry = ModuleInitialization* (*)();
        const auto entry = reinterpret_cast<Entry>(plugin_.resolve("kvms_module_entry"));
        QVERIFY(entry);
        entry_ = entry();
        QVERIFY(entry_);
        QCOMPARE(entry(), entry_);
        QCOMPARE(entry_->metaObject()->className(), "kvms_matrix::matrixModuleInit");
    }

    void moduleInitPreparesOnce()
    {
        QVERIFY(entry_);
        const QString backgrounds = SysPaths::matrixDataDir() + QStringLiteral("/backgroud_images");
        QVERIFY(!QDir(backgrounds).exists());
        entry_->moduleInit();
        QVERIFY(QDir(backgrounds).exists());
        const QString sheet = qApp->styleSheet();
        QVERIFY(!sheet.isEmpty());

        // A second call does nothing, even when the directory has gone meanwhile.
        QVERIFY(QDir(backgrounds).removeRecursively());
        entry_->moduleInit();
        QVERIFY(!QDir(backgrounds).exists());
        QCOMPARE(qApp->styleSheet(), sheet);
    }

    void pageBelongsToTheHost()
    {
        QVERIFY(entry_);
        std::unique_ptr<kvms_base::BaseForm> page(entry_->createForm());
        QVERIFY(page);
        QVERIFY(!page->parent());
        entry_->recoveryToInitialState();
        page.reset();
        entry_->recoveryToInitialState(); // the page is gone: nothing to reset
    }
};

KVMS_TEST_MAIN(TestModuleEntry)
#include "TestModuleEntry.moc"

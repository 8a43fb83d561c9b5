// The wall page against one virtual decoder: drops, menu codes, refusals, pictures, joins,
// scenes and loops, each checked on the decoder's own state.
#include "CanvasFixture.h"
#include "DecoderFixture.h"
#include "SuiteMain.h"
#include "SystemAssistant.h"
#include "TestMain.h"
#include "TestTimeout.h"

#include "BannerConfigDlg.h"
#include "CaptureSettings.h"
#include "CaptureSettingsDlg.h"
#include "ControlMatrixWt.h"
#include "DevFileDlg.h"
#include "LoopSettingsDlg.h"
#include "MatrixForm.h"
#include "MatrixListItem.h"
#include "MatrixSdkWorker.h"
#include "MatrixSignals.h"
#include "ScreenColourDlg.h"
#include "SourcePane.h"
#include "WallConfigStore.h"
#include "core/VirtualDecoder.h"

#include "DevsMgrData.h"
#include "KSingleton.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeWidget>

using namespace kvms_matrix;
using kvmstest::scaled;
using Type = cmatrix::wire::MessageType;

// The page against one virtual decoder: what the operator does ends on the decoder.
class PageActionsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void dropsBindTheTreeItem_data();
    void dropsBindTheTreeItem();
    void menuCodesOnTheDecoder_data();
    void menuCodesOnTheDecoder();
    void backgroundPictureRules_data();
    void backgroundPictureRules();
    void grabScreenFollowsTheCaptureSettings_data();
    void grabScreenFollowsTheCaptureSettings();
    void joinAndUnjoinCells();
    void scenesSaveRenameAndRecall();
    void sceneLimit();
    void refusedSceneSaveAndRenameKey();
    void loopMadeInTheDialogTurnsWhereDropped();
    void bannerPutUpAndMoved();
    void usbFilePlayedInTheSelectedWindow();
    void hdmiInputAndScreenColour();

private:
    QTemporaryDir dir_;
    QString previous_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    kvms_matrix::MatrixForm* page_ = nullptr;
};

namespace {

kvmstest::DecoderFixture fixture;

MatrixSignals* hub()
{
    return KCOMMON::KSingleton<MatrixSignals>::instance();
}

DeviceInfo_t recordOf(const vdec::VirtualDecoder* decoder, uint32_t windowId, int32_t sub)
{
    const vdec::DecoderSnapshot state = decoder->snapshot();
    const vdec::Window* w = state.window(windowId);
    DeviceInfo_t none {};
    qstrncpy(none.devId, "<none>", sizeof none.devId);
    return w && w->sources.count(sub) ? w->sources.at(sub) : none;
}

QString sourceOf(const vdec::VirtualDecoder* decoder, uint32_t windowId, int32_t sub)
{
    return QString::fromUtf8(recordOf(decoder, windowId, sub).devId);
}

// Makes a tree item of the device tab the current one, as a click on it does.
void pick(MatrixForm* page, const QString& name)
{
    page->sourcePane()->tabs()->setCurrentIndex(0);
    QTreeWidget* devices = page->sourcePane()->deviceTree();
    devices->setCurrentItem(devices->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0));
}

int divisionOf(const vdec::VirtualDecoder* decoder, uint32_t windowId)
{
    const vdec::DecoderSnapshot state = decoder->snapshot();
    const vdec::Window* w = state.window(windowId);
    return w ? w->division : -1;
}

void dropOn(ControlMatrixWt* canvas, const QPoint& at, QMimeData* data)
{
    // The drop goes to the widget that accepted the drag's entry.
    QDragEnterEvent enter(at, Qt::MoveAction | Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &enter);
    QDropEvent event(at, Qt::MoveAction | Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &event);
}

QPoint centreOf(const ControlMatrixWt* canvas, int windowId, int windowType, int sub = 1)
{
    const QWidget* panel = canvas->panel(ControlMatrixWt::panelKey(windowId, sub, windowType));
    return panel ? panel->geometry().center() : QPoint(-1, -1);
}

QString writeJpeg(const QString& dir, const QString& name)
{
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    const QString path = QDir(dir).filePath(name);
    return image.save(path, "JPG") ? path : QString();
}

} // namespace

void PageActionsTest::initTestCase()
{
    canvastest::muteMessages();
    previous_ = QDir::currentPath();
    QVERIFY(dir_.isValid() && QDir::setCurrent(dir_.path()));
    decoder_ = fixture.startDecoder(61, [](vdec::DecoderConfig& c) { c.turnUnitMs = 50; });
    QVERIFY(decoder_);
    QVERIFY(KCOMMON::KSingleton<DevsMgrData>::instance()->loadFromFile(QStringLiteral(KVMS_DEMO_CATALOGUE)));
    MatrixInfo info;
    info.type = 0;
    info.ip = decoder_->address();
    info.port = info.manager_port = decoder_->port();
    info.username = decoder_->config().adminUser;
    info.password = decoder_->config().adminPassword;
    TvWallManagement wall;
    wall.name = QStringLiteral("Operations");
    wall.main_decoder_ip = info.ip;
    wall.row = 2;
    wall.column = 2;
    WallConfigStore::save({ info }, wall);
    page_ = new MatrixForm;
    page_->resize(1300, 760);
    page_->show();
    QVERIFY(QTest::qWaitForWindowExposed(page_));
    page_->setDecoderList({ info }, info.ip);
    QTRY_COMPARE_WITH_TIMEOUT(page_->canvas()->windowInfoList().size(), 4, scaled(10000));
}

void PageActionsTest::cleanupTestCase()
{
    delete page_;
    MatrixSdkWorker* worker = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    worker->disconnectAllMatrix();
    worker->finishPendingAndStop();
    worker->wait(scaled(10000));
    fixture.cleanup();
    QDir::setCurrent(previous_);
}

void PageActionsTest::init()
{
    SystemAssistant::clearRecentMessages();
    decoder_->faults().clear();
}

void PageActionsTest::dropsBindTheTreeItem_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<int>("window");
    QTest::addColumn<int>("fault"); // the decoder's answer to the binding; 0: its own rules
    QTest::addColumn<QString>("bound"); // what the decoder shows afterwards
    QTest::addColumn<QString>("tip");
    QTest::newRow("camera channel") << "Lobby" << 2 << 0 << "NVR0001&3"
                                    << "";
    QTest::newRow("same camera in another window")
        << "Lobby" << 3 << 0 << "<none>"
        << "Failed to add a video source: Lobby is a video source already on the wall";
    QTest::newRow("decoder refuses") << "Server Room" << 2 << int(CMATRIX_ERR_FAILED) << "NVR0001&3"
                                     << "device Server Room set signal source failed(-1).";
    QTest::newRow("device, not a channel") << "Recorder 1" << 2 << 0 << ""
                                           << "";
}

void PageActionsTest::dropsBindTheTreeItem()
{
    QFETCH(QString, item);
    QFETCH(int, window);
    QFETCH(int, fault);
    QFETCH(QString, bound);
    QFETCH(QString, tip);
    pick(page_, item);
    if (fault)
        decoder_->faults().failNext(Type::WindowDeviceAdd, fault);
    auto* data = new QMimeData;
    data->setData(QStringLiteral("application/x-qabstractitemmodeldatalist"), QByteArray());
    ControlMatrixWt* canvas = page_->canvas();
    dropOn(canvas, centreOf(canvas, window, 0), data);
    delete data;
    if (!tip.isEmpty())
        QTRY_COMPARE_WITH_TIMEOUT(page_->tipText(), tip, scaled(5000));
    QTRY_COMPARE_WITH_TIMEOUT(sourceOf(decoder_, window, 1), bound, scaled(5000));
    // A refusal leaves the canvas showing what the decoder kept.
    MatrixWindowInfo shown;
    QVERIFY(canvas->windowInfo(window, 0, &shown));
    if (!tip.isEmpty())
        QVERIFY(shown.subWindows.value(0).device.deviceName != item);
}

void PageActionsTest::menuCodesOnTheDecoder_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("sub");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("refused"); // message the decoder refuses once; 0: none
    QTest::addColumn<QString>("tip");
    QTest::addColumn<QList<int>>("after"); // decoder's division and full sub-window, canvas's full index
    const int none = 0;
    QTest::newRow("divide into 9") << 0 << -1 << 9 << none << "" << QList<int> { 9, 0, -1 };
    QTest::newRow("show 5 full") << 12 << 5 << 1 << none << "" << QList<int> { 9, 5, 4 };
    QTest::newRow("back from full") << 12 << 5 << 0 << none << "" << QList<int> { 9, 0, -1 };
    QTest::newRow("refused full still toggles")
        << 12 << 5 << 1 << int(Type::WindowSetFullScreen) << "full window failed" << QList<int> { 9, 0, 4 };
    QTest::newRow("and back") << 12 << 5 << 0 << none << "" << QList<int> { 9, 0, -1 };
    QTest::newRow("refused division") << 0 << -1 << 4 << int(Type::WindowSetDivision) << "cut window failed"
                                      << QList<int> { 9, 0, -1 };
    QTest::newRow("refused clear still empties the panel")
        << 2 << 1 << 0 << int(Type::WindowDeviceAdd) << "cls failed" << QList<int> { 9, 0, -1 };
}

void PageActionsTest::menuCodesOnTheDecoder()
{
    QFETCH(int, code);
    QFETCH(int, sub);
    QFETCH(int, type);
    QFETCH(int, refused);
    QFETCH(QString, tip);
    QFETCH(QList<int>, after);
    ControlMatrixWt* canvas = page_->canvas();
    if (code == 2) { // a camera to clear
        pick(page_, QStringLiteral("Lobby"));
        emit canvas->signalVideoPanelDropEvent(1, 1, 0);
        QTRY_COMPARE_WITH_TIMEOUT(sourceOf(decoder_, 1, 1), QStringLiteral("NVR0001&3"), scaled(5000));
    }
    if (refused)
        decoder_->faults().failNext(Type(refused), CMATRIX_ERR_FAILED);
    emit hub()->signalRightMemuClicked(1, sub, 0, code, type);
    if (!tip.isEmpty())
        QTRY_COMPARE_WITH_TIMEOUT(page_->tipText(), MatrixForm::tr(qPrintable(tip)), scaled(5000));
    const auto state = [this, canvas] {
        const vdec::DecoderSnapshot snapshot = decoder_->snapshot(); // the window lives in it
        const vdec::Window* w = snapshot.window(1);
        return QList<int> { w->division, w->fullScreenSub, canvas->fullSubWindowIndex(1, 0) };
    };
    QTRY_COMPARE_WITH_TIMEOUT(state(), after, scaled(5000));
    QTRY_VERIFY_WITH_TIMEOUT(canvas->panel(ControlMatrixWt::panelKey(1, after.first(), 0)), scaled(5000));
    if (code == 2) { // the decoder kept its camera
        MatrixWindowInfo shown;
        QVERIFY(canvas->windowInfo(1, 0, &shown));
        QCOMPARE(shown.subWindows.first().device.deviceId, QString());
        QCOMPARE(sourceOf(decoder_, 1, 1), QStringLiteral("NVR0001&3"));
    }
}

void PageActionsTest::backgroundPictureRules_data()
{
    QTest::addColumn<int>("nameLength"); // of the file name, ".jpg" included
    QTest::addColumn<bool>("jpeg");
    QTest::addColumn<QString>("message"); // empty: bound
    QTest::newRow("89 characters") << 89 << true << "";
    QTest::newRow("90 characters") << 90 << true << "file name max len is 89!";
    QTest::newRow("not a JPEG") << 12 << false << "The picture is not a JPEG image: %1";
}

void PageActionsTest::backgroundPictureRules()
{
    QFETCH(int, nameLength);
    QFETCH(bool, jpeg);
    QFETCH(QString, message);
    const QString name = QString(nameLength - 4, QLatin1Char('p')) + QStringLiteral(".jpg");
    QString path = QDir(dir_.path()).filePath(name);
    if (jpeg) {
        path = writeJpeg(dir_.path(), name);
    } else {
        QImage(8, 8, QImage::Format_RGB32).save(QDir(dir_.path()).filePath(QStringLiteral("x.png")), "PNG");
        QFile::remove(path);
        QVERIFY(QFile::copy(QDir(dir_.path()).filePath(QStringLiteral("x.png")), path));
    }
    QVERIFY(!path.isEmpty());
    const QString before = sourceOf(decoder_, 3, 1);
    page_->setBackgroundPicture(3, 1, 0, path);
    if (message.isEmpty()) {
        // A second picture before the first is confirmed is refused.
        page_->setBackgroundPicture(3, 1, 0, path);
        QCOMPARE(SystemAssistant::recentMessages().value(0),
            MatrixForm::tr("Please add this background image after the background image was added last time."));
        QTRY_VERIFY_WITH_TIMEOUT(sourceOf(decoder_, 3, 1).startsWith(QLatin1String("pic_")), scaled(5000));
        MatrixWindowInfo shown;
        QTRY_VERIFY_WITH_TIMEOUT(page_->canvas()->windowInfo(3, 0, &shown)
                && shown.subWindows.value(0).device.deviceId.startsWith(QLatin1String("pic_")),
            scaled(5000));
        return;
    }
    QCOMPARE(SystemAssistant::recentMessages().value(0), MatrixForm::tr(qPrintable(message)).arg(name));
    QCOMPARE(sourceOf(decoder_, 3, 1), before);
}

void PageActionsTest::grabScreenFollowsTheCaptureSettings_data()
{
    QTest::addColumn<bool>("stream");
    QTest::addColumn<bool>("asked"); // false: saved settings say not to ask
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("protocol");
    QTest::newRow("pictures, asked") << false << true << "cap__Desk-7_3_1" << 6;
    QTest::newRow("ONVIF stream, asked") << true << true << "caponvif__Desk-7_3_1" << 3;
    QTest::newRow("pictures, not asked") << false << false << "cap__Desk-7_3_1" << 6;
}

void PageActionsTest::grabScreenFollowsTheCaptureSettings()
{
    QFETCH(bool, stream);
    QFETCH(bool, asked);
    QFETCH(QString, id);
    QFETCH(int, protocol);
    if (!asked) {
        CaptureSettings saved;
        saved.label = QStringLiteral("Desk 7");
        saved.askEachTime = false;
        QVERIFY(saved.save());
    }
    emit hub()->signalRightMemuClicked(3, 1, 0, 8, 0);
    auto* dialog = page_->findChild<CaptureSettingsDlg*>();
    QCOMPARE(dialog && dialog->isVisible(), asked);
    if (asked) {
        dialog->labelEdit()->setText(QStringLiteral("Desk 7"));
        QTest::mouseClick(stream ? dialog->streamButton() : dialog->directButton(), Qt::LeftButton, {}, QPoint(6, 6));
        dialog->addressEdit()->setText(QStringLiteral("127.0.0"));
        QCOMPARE(dialog->okButton()->isEnabled(), !stream); // a stream needs its publisher's address
        dialog->addressEdit()->setText(QStringLiteral("127.0.0.9"));
        QCOMPARE(dialog->previewLabel()->text(), id);
        QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    }
    QTRY_COMPARE_WITH_TIMEOUT(sourceOf(decoder_, 3, 1), id, scaled(5000));
    const DeviceInfo_t record = recordOf(decoder_, 3, 1);
    QCOMPARE(record.protocol, protocol);
    if (stream)
        QCOMPARE(QByteArray(record.mainUrl), QByteArray("rtsp://127.0.0.9/0"));
    // Cleared: the projection ends with its window.
    emit hub()->signalRightMemuClicked(3, 1, 0, 2, 0);
    QTRY_COMPARE_WITH_TIMEOUT(sourceOf(decoder_, 3, 1), QStringLiteral("emp_3"), scaled(5000));
}

void PageActionsTest::joinAndUnjoinCells()
{
    ControlMatrixWt* canvas = page_->canvas();
    const QPoint a = centreOf(canvas, 2, 0);
    const QPoint b = centreOf(canvas, 4, 0);
    QTest::mousePress(canvas, Qt::LeftButton, {}, a);
    QMouseEvent move(QEvent::MouseMove, b, canvas->mapToGlobal(b), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &move);
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, b);
    const auto windowCount = [this] { return int(decoder_->snapshot().windows.size()); };
    QTRY_COMPARE_WITH_TIMEOUT(windowCount(), 3, scaled(5000));
    QCOMPARE(decoder_->snapshot().window(2)->h, 32768);
    MatrixWindowInfo joined;
    QTRY_VERIFY_WITH_TIMEOUT(canvas->windowInfo(2, 1, &joined), scaled(5000));
    emit hub()->signalRightMemuClicked(2, 1, 1, 10, 0);
    QTRY_COMPARE_WITH_TIMEOUT(windowCount(), 4, scaled(5000));
    QTRY_VERIFY_WITH_TIMEOUT(canvas->windowInfo(4, 0, &joined), scaled(5000));
}

void PageActionsTest::scenesSaveRenameAndRecall()
{
    QListWidget* scenes = page_->sceneList();
    const auto decoderScenes = [this] {
        QStringList names;
        for (const vdec::Scene& s : decoder_->snapshot().scenes)
            names.append(QString::fromStdString(s.name));
        return names;
    };
    const int first = scenes->count();
    QTest::mouseClick(page_->sceneAddButton(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(decoderScenes().size(), first + 1, scaled(5000));
    // Window 1 changes, then a second scene.
    emit hub()->signalRightMemuClicked(1, -1, 0, 0, 4);
    QTRY_COMPARE_WITH_TIMEOUT(divisionOf(decoder_, 1), 4, scaled(5000));
    QTest::mouseClick(page_->sceneAddButton(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(decoderScenes().size(), first + 2, scaled(5000));

    // Recalled by double-click: window 1 is back to nine sub-windows.
    auto* row = qobject_cast<MatrixListItem*>(scenes->itemWidget(scenes->item(first)));
    QVERIFY(row);
    QTest::mouseDClick(row, Qt::LeftButton, {}, QPoint(4, 10));
    QTRY_COMPARE_WITH_TIMEOUT(divisionOf(decoder_, 1), 9, scaled(5000));

    // Renamed in place: quotes and Chinese text reach the decoder unchanged; a name already
    // used by the other scene is refused.
    const QString other = qobject_cast<MatrixListItem*>(scenes->itemWidget(scenes->item(first + 1)))->name();
    row->beginRename();
    row->nameEdit()->setText(other);
    QTest::keyClick(row->nameEdit(), Qt::Key_Return);
    QCOMPARE(SystemAssistant::recentMessages().value(0), MatrixForm::tr("Scene name is repeat,please input again."));
    const QString name = QStringLiteral("\"Night\" 夜班 'A'");
    row->beginRename();
    row->nameEdit()->setText(name + QString(70, QLatin1Char('x')));
    QTest::keyClick(row->nameEdit(), Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(decoderScenes().contains(row->name()), scaled(5000));
    QVERIFY(row->name().startsWith(name) && row->name().size() <= 32);
}

void PageActionsTest::sceneLimit()
{
    QList<MatrixSceneInfo> five;
    for (int i = 1; i <= 5; ++i)
        five.append({ 100 + i, QStringLiteral("Listed %1").arg(i) });
    page_->slotGetSceneInfoResult(five);
    QTest::mouseClick(page_->sceneAddButton(), Qt::LeftButton);
    QCOMPARE(page_->sceneList()->count(), 6);
    QVERIFY(SystemAssistant::recentMessages().isEmpty());
    QTest::mouseClick(page_->sceneAddButton(), Qt::LeftButton);
    QCOMPARE(page_->sceneList()->count(), 6);
    QCOMPARE(
        SystemAssistant::recentMessages().value(0), MatrixForm::tr("The upper limit of the scene has been reached."));
    QTRY_VERIFY_WITH_TIMEOUT(decoder_->snapshot().scenes.size() >= 1, scaled(5000));
}

void PageActionsTest::refusedSceneSaveAndRenameKey()
{
    // A refused scene save: told, and the list shows what the decoder has.
    KCOMMON::KSingleton<MatrixSdkWorker>::instance()->getScene(page_->state().currentHandle());
    QTRY_COMPARE_WITH_TIMEOUT(page_->sceneList()->count(), int(decoder_->snapshot().scenes.size()), scaled(5000));
    decoder_->faults().failNext(Type::SceneCreate, CMATRIX_ERR_LIMIT);
    const size_t scenesBefore = decoder_->snapshot().scenes.size();
    QTest::mouseClick(page_->sceneAddButton(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(SystemAssistant::recentMessages().value(0),
        MatrixForm::tr("Save scene failed(%1).").arg(CMATRIX_ERR_LIMIT), scaled(5000));
    QTRY_COMPARE_WITH_TIMEOUT(page_->sceneList()->count(), int(scenesBefore), scaled(5000));
    QCOMPARE(decoder_->snapshot().scenes.size(), scenesBefore);

    // F2 renames the selected scene in place.
    page_->slotGetSceneInfoResult({ { 7, QStringLiteral("Morning") } });
    auto* row = qobject_cast<MatrixListItem*>(page_->sceneList()->itemWidget(page_->sceneList()->item(0)));
    QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(4, 10));
    QVERIFY(row->isSelected());
    // Shortcuts reach the active window only.
    QApplication::setActiveWindow(page_);
    QTRY_VERIFY_WITH_TIMEOUT(page_->isActiveWindow(), scaled(3000));
    QTest::keyClick(page_, Qt::Key_F2);
    QVERIFY(row->nameEdit()->isVisible());
    QTest::keyClick(row->nameEdit(), Qt::Key_Escape);
}

void PageActionsTest::loopMadeInTheDialogTurnsWhereDropped()
{
    QTest::mouseClick(page_->loopAddButton(), Qt::LeftButton);
    LoopSettingsDlg* dialog = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT((dialog = page_->findChild<LoopSettingsDlg*>()) && dialog->isVisible(), scaled(3000));
    QCOMPARE(dialog->windowTitle(), LoopSettingsDlg::tr("New Loop"));
    dialog->nameEdit()->setText(QStringLiteral("Entrances"));
    QVERIFY(dialog->availableList()->count() >= 3);
    for (int i = 0; i < 3; ++i)
        dialog->availableList()->item(i)->setSelected(true);
    QTest::mouseClick(dialog->addButton(), Qt::LeftButton);
    QCOMPARE(dialog->chosenList()->count(), 3);
    QTest::mouseClick(dialog->saveButton(), Qt::LeftButton);
    // The scheme and then its sources: the second call may still be on its way.
    const auto sources = [this] {
        const vdec::DecoderSnapshot state = decoder_->snapshot();
        return state.schemes.size() == 1 ? int(state.schemes.front().devices.size()) : -1;
    };
    QTRY_COMPARE_WITH_TIMEOUT(sources(), 3, scaled(5000));
    QTRY_COMPARE_WITH_TIMEOUT(page_->loopList()->count(), 1, scaled(5000));

    auto* row = qobject_cast<MatrixListItem*>(page_->loopList()->itemWidget(page_->loopList()->item(0)));
    QVERIFY(row);
    const QScopedPointer<QMimeData> data(row->dragData());
    dropOn(page_->canvas(), centreOf(page_->canvas(), 2, 0), data.data());
    QTRY_VERIFY_WITH_TIMEOUT(decoder_->snapshot().loops.count(2), scaled(5000));
    QCOMPARE(int(decoder_->snapshot().loops.at(2).schemeId), row->id());
    // The decoder turns it: another source comes up in the window.
    const QString shownFirst = sourceOf(decoder_, 2, 1);
    QTRY_VERIFY_WITH_TIMEOUT(sourceOf(decoder_, 2, 1) != shownFirst, scaled(5000));
    // The loop owns the window's sources: a camera dropped there is refused, the loop goes on.
    pick(page_, QStringLiteral("Car Park"));
    emit page_->canvas()->signalVideoPanelDropEvent(2, 1, 0);
    QTRY_COMPARE_WITH_TIMEOUT(
        page_->tipText(), MatrixForm::tr("Cannot set signal source under group loop"), scaled(5000));
    QCOMPARE(decoder_->snapshot().window(2)->sourceKind, 1);
}

void PageActionsTest::bannerPutUpAndMoved()
{
    QTest::mouseClick(page_->bannerButton(), Qt::LeftButton);
    BannerConfigDlg* dialog = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT((dialog = page_->findChild<BannerConfigDlg*>()) && dialog->isVisible(), scaled(3000));
    const QString text = QStringLiteral("Shift change 交接班 \"now\"");
    dialog->messageEdit()->setText(text);
    QTest::mouseClick(dialog->saveButton(), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(decoder_->snapshot().banner.show == 1, scaled(5000));
    QCOMPARE(QString::fromUtf8(decoder_->snapshot().banner.message), text);
    // A decoder that never showed a banner reports both colours as 0; the text still stands out.
    QVERIFY((decoder_->snapshot().banner.fontColor ^ decoder_->snapshot().banner.backColor) & 0xFFFFFFu);
    QWidget* banner = page_->canvas()->bannerWidget();
    QTRY_VERIFY_WITH_TIMEOUT(banner->isVisible(), scaled(5000));

    // Dragged up the wall: the decoder's banner follows.
    const int yBefore = decoder_->snapshot().banner.y;
    const QPoint grip(20, 5);
    QTest::mousePress(banner, Qt::LeftButton, {}, grip);
    QMouseEvent drag(QEvent::MouseMove, grip - QPoint(0, 120), banner->mapToGlobal(grip - QPoint(0, 120)), Qt::NoButton,
        Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(banner, &drag);
    QTest::mouseRelease(banner, Qt::LeftButton, {}, grip - QPoint(0, 120));
    QTRY_VERIFY_WITH_TIMEOUT(decoder_->snapshot().banner.y < yBefore, scaled(5000));
    QCOMPARE(QString::fromUtf8(decoder_->snapshot().banner.message), text);
}

void PageActionsTest::usbFilePlayedInTheSelectedWindow()
{
    ControlMatrixWt* canvas = page_->canvas();
    QTest::mouseClick(canvas, Qt::LeftButton, {}, centreOf(canvas, 3, 0));
    QCOMPARE(canvas->currentWindowId(), 3);
    // A stick with no files: the operator is told.
    QTest::mouseClick(page_->devFileButton(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(
        SystemAssistant::recentMessages().value(0), MatrixForm::tr("Video file fetch is empty!"), scaled(5000));

    QFile clip(QDir(decoder_->config().stateDir).filePath(QStringLiteral("usb/clip.mp4")));
    QVERIFY(clip.open(QIODevice::WriteOnly) && clip.write(QByteArray(4096, 'v')) == 4096);
    clip.close();
    QTest::mouseClick(page_->devFileButton(), Qt::LeftButton);
    DevFileDlg* dialog = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT((dialog = page_->findChild<DevFileDlg*>()) && dialog->isVisible(), scaled(5000));
    QCOMPARE(dialog->chosenPath(), QStringLiteral("/clip.mp4"));
    QTest::mouseClick(dialog->playButton(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(sourceOf(decoder_, 3, 1), QStringLiteral("usbfileplay"), scaled(5000));
}

void PageActionsTest::hdmiInputAndScreenColour()
{
    ControlMatrixWt* canvas = page_->canvas();
    QTest::mouseClick(canvas, Qt::LeftButton, {}, centreOf(canvas, 4, 0));
    QCOMPARE(canvas->currentWindowId(), 4);
    // The inputs the decoder declares, and none when it cannot tell.
    QMenu* inputs = page_->hdmiButton()->menu();
    const auto offered = [inputs] {
        QStringList texts;
        for (const QAction* action : inputs->actions())
            texts.append(action->text());
        return texts;
    };
    const QStringList declared { MatrixForm::tr("HDMI input %1").arg(1),
        MatrixForm::tr("HDMI input %1 (no signal)").arg(2) };
    QTRY_COMPARE_WITH_TIMEOUT(offered(), declared, scaled(5000));
    inputs->actions().first()->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(sourceOf(decoder_, 4, 1), QStringLiteral("hdmiinput"), scaled(5000));
    decoder_->faults().failNext(Type::GetHdmiStatus, CMATRIX_ERR_NOT_SUPPORTED);
    emit inputs->aboutToShow();
    QTRY_VERIFY_WITH_TIMEOUT(offered().isEmpty() && !page_->hdmiButton()->isEnabled(), scaled(5000));

    // Window 4 is the bottom-right screen: column 1, row 1.
    QTest::mouseClick(page_->colourButton(), Qt::LeftButton);
    ScreenColourDlg* dialog = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT((dialog = page_->findChild<ScreenColourDlg*>()) && dialog->isVisible(), scaled(3000));
    QCOMPARE(QList<int>({ dialog->col(), dialog->row() }), QList<int>({ 1, 1 }));
    QTRY_VERIFY_WITH_TIMEOUT(dialog->applyButton()->isEnabled(), scaled(5000));
    QCOMPARE(dialog->slider(0)->value(), 50); // the decoder's default
    dialog->slider(0)->setValue(72);
    QTest::mouseClick(dialog->applyButton(), Qt::LeftButton);
    const auto brightness = [this] {
        const auto colours = decoder_->snapshot().screenColors;
        const auto it = colours.find({ 1, 1 });
        return it == colours.end() ? -1 : int(it->second.brightness);
    };
    QTRY_COMPARE_WITH_TIMEOUT(brightness(), 72, scaled(5000));
    dialog->close();
}

KVMS_TEST_CLASS(PageActionsTest)
#include "TestPageActions.moc"

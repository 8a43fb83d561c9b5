// MatrixForm: putting this workstation's desktop on the wall ("grab screen").
#include "MatrixForm.h"

#include "CaptureSettingsDlg.h"

#include "MatrixSdkWorker.h"

#include "SystemAssistant.h"

namespace kvms_matrix {

namespace {

void keep(const CaptureSettings& settings, MatrixForm* page)
{
    if (!settings.save())
        SystemAssistant::messageAlert(MatrixForm::tr("The capture settings could not be saved."), page);
}

} // namespace

void MatrixForm::grabScreen(int windowId, int subWindowId, int windowType)
{
    const CaptureSettings saved = CaptureSettings::load();
    const bool ready = saved.sending == CaptureSettings::Sending::Direct || saved.streamAddressValid();
    if (!saved.askEachTime && ready) {
        bindSource(windowId, subWindowId, windowType, saved.source(windowId, subWindowId), false);
        return;
    }
    auto* dialog = new CaptureSettingsDlg(saved, true, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setTarget(windowId, subWindowId);
    connect(dialog, &CaptureSettingsDlg::accepted, this, [this, dialog, windowId, subWindowId, windowType] {
        const CaptureSettings chosen = dialog->settings();
        keep(chosen, this);
        bindSource(windowId, subWindowId, windowType, chosen.source(windowId, subWindowId), false);
    });
    dialog->open();
}

void MatrixForm::followProjection(int windowId, int subWindowId, bool projecting)
{
    if (projecting) {
        m_projection = qMakePair(windowId, subWindowId);
        return;
    }
    if (m_projection.first != windowId || (subWindowId != -1 && m_projection.second != subWindowId))
        return;
    m_projection = qMakePair(-1, -1);
    m_worker->endCapture(); // waiting for the round to end is not for this thread
}

void MatrixForm::slotCaptureBtnClicked()
{
    auto* dialog = new CaptureSettingsDlg(CaptureSettings::load(), false, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &CaptureSettingsDlg::accepted, this, [this, dialog] { keep(dialog->settings(), this); });
    dialog->open();
}

} // namespace kvms_matrix

#pragma once

#include "KWidget.h"

#include <QString>

namespace kvms_base {

// Base of every page the host shows in its main area.
class BaseForm : public KCOMMON::KWidget {
    Q_OBJECT

public:
    explicit BaseForm(QWidget* parent = nullptr);

    // Name the host shows for the page (tab, title); the object name unless overridden.
    virtual QString formName() const;

    // Called by the host each time it brings the page to the front.
    virtual void formActivated();

    // Called by the host when the page's module is asked to return to its initial state.
    virtual void recoveryToInitialState();

signals:
    // The page wants the host to show another title for it.
    void signalFormNameChanged(const QString& name);
};

} // namespace kvms_base

#pragma once

#include "platform/Alerts.h"

#include <QPointer>
#include <QWidget>

class OpenDialogs;

// Alerts as sheets over the main window, or over the dialog that is open there.
class AlertSheets final : public Alerts {
public:
    explicit AlertSheets(OpenDialogs &openDialogs)
        : _openDialogs(openDialogs)
    {
    }

    // The main window. Without one an alert stands by itself.
    void setParent(QWidget *parent) { _parent = parent; }

    Alert::Answer ask(const Alert &alert) override;

private:
    void setSilent(bool silent) override; // ends the open ones
    Alert::Answer show(const Alert &alert);

    OpenDialogs &_openDialogs;
    QPointer<QWidget> _parent;
    bool _silent = false;
};

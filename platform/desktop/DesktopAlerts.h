#pragma once

#include "platform/Alerts.h"

#include <QPointer>
#include <QWidget>

class Questions;

// Alerts as dialogs over the main window, or over the dialog that is open there.
class DesktopAlerts final : public Alerts {
public:
    explicit DesktopAlerts(Questions &questions)
        : _questions(questions)
    {
    }

    // The main window. Without one an alert stands by itself.
    void setParent(QWidget *parent) { _parent = parent; }

    Alert::Answer ask(const Alert &alert) override;

private:
    Alert::Answer show(const Alert &alert);

    Questions &_questions;
    QPointer<QWidget> _parent;
};

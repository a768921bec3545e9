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

    // While it lives no alert shows: each answers at once as if it had been cancelled, the open
    // ones too. Main thread.
    class Silence {
    public:
        explicit Silence(AlertSheets &alerts);
        ~Silence() { _alerts._silent = false; }
        Silence(const Silence &) = delete;
        Silence &operator=(const Silence &) = delete;

    private:
        AlertSheets &_alerts;
    };

private:
    Alert::Answer show(const Alert &alert);

    OpenDialogs &_openDialogs;
    QPointer<QWidget> _parent;
    bool _silent = false;
};

#pragma once

#include "platform/OpenPanel.h"

#include <QPointer>
#include <QWidget>

class OpenDialogs;

// Lets a person pick one of the installed applications, or a folder.
class DesktopOpenPanel final : public OpenPanel {
public:
    explicit DesktopOpenPanel(OpenDialogs &openDialogs)
        : _openDialogs(openDialogs)
    {
    }

    void setParent(QWidget *parent) { _parent = parent; }

    std::optional<QString> chooseApplication() override;
    std::optional<QString> chooseFolder(const QString &start) override;

private:
    OpenDialogs &_openDialogs;
    QPointer<QWidget> _parent;
};

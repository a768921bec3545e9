#pragma once

#include "platform/OpenPanel.h"

#include <QPointer>
#include <QWidget>

class Questions;

// Lets a person pick one of the installed applications, or a folder.
class DesktopOpenPanel final : public OpenPanel {
public:
    explicit DesktopOpenPanel(Questions &questions)
        : _questions(questions)
    {
    }

    void setParent(QWidget *parent) { _parent = parent; }

    std::optional<QString> chooseApplication() override;
    std::optional<QString> chooseFolder(const QString &start) override;

private:
    Questions &_questions;
    QPointer<QWidget> _parent;
};

#pragma once

#include "views/ElidedLabel.h"

class UserDefaults;

// A field of an info bar, with a frame in the person's colour. Without a stored colour the frame is
// transparent.
class InfoBarTextField final : public ElidedLabel {
    Q_OBJECT

public:
    explicit InfoBarTextField(Qt::TextElideMode mode, QWidget *parent = nullptr)
        : ElidedLabel(mode, parent)
    {
    }

    void readFrameColors(const UserDefaults &defaults);
    QColor frameColor() const { return _frame; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor _frame { Qt::transparent };
};

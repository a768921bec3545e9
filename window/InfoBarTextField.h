#pragma once

#include "widgets/ElidedLabel.h"

#include <optional>

class UserDefaults;

// A field of an info bar, with text and frame in the person's colours. Without stored ones the text
// is black and the frame transparent. Black text is in a dark window as light as other texts.
class InfoBarTextField final : public ElidedLabel {
    Q_OBJECT

public:
    explicit InfoBarTextField(Qt::TextElideMode mode, QWidget *parent = nullptr)
        : ElidedLabel(mode, parent)
    {
    }

    // The frame as it is stored, and the text with it.
    void readFrameColors(const UserDefaults &defaults);
    QColor frameColor() const { return _frame; }
    QColor textColor() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<QColor> _text;
    QColor _frame { Qt::transparent };
};

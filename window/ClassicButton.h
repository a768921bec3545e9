#pragma once

#include <QPushButton>

// A button of the row under the panes: the command's name, and its key in a quieter tone.
class ClassicButton final : public QPushButton {
    Q_OBJECT

public:
    ClassicButton(const QString &command, const QString &key, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int keyWidth() const;

    const QString _key;
};

#pragma once

#include "widgets/Sheet.h"

class QLineEdit;

// Asks for one line of text.
class InputSheet final : public Sheet {
    Q_OBJECT

public:
    InputSheet(const QString &prompt, const QString &text, QWidget *mainWindow);

    // The text; "" when cancelled, which every caller takes as a cancel.
    QString getString();

private:
    void selectName();

    QLineEdit *inputText;
};

#pragma once

#include "widgets/Sheet.h"

class DiskQuestions;
class QLineEdit;

// Asks for one line of text.
class InputSheet final : public Sheet {
    Q_OBJECT

public:
    InputSheet(const QString &prompt, const QString &text, QWidget *mainWindow);
    // For the path of a folder, which is completed while it is typed.
    InputSheet(const QString &prompt, const QString &path, DiskQuestions &questions,
               QWidget *mainWindow);

    // The text; "" when cancelled, which every caller takes as a cancel.
    QString getString();

private:
    void build(const QString &prompt, const QString &text);
    void selectName();

    QLineEdit *inputText;
};

#pragma once

#include "window/RowMatching.h"
#include "window/Sheet.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

// Asks for the pattern of a group selection.
class ExpandSelectionSheet final : public Sheet {
    Q_OBJECT

public:
    ExpandSelectionSheet(const QString &title, QWidget *mainWindow);

    // The pattern; its text is "" when the sheet was cancelled.
    ExpandSelection getInput();

private:
    QComboBox *expandSelectionTarget;
    QComboBox *expandSelectionMethod;
    QLineEdit *expandSelectionText;
    QCheckBox *caseSensitive;
};

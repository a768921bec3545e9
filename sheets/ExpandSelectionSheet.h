#pragma once

#include "model/RowMatching.h"
#include "widgets/Sheet.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

// Asks for the pattern of a group selection.
class ExpandSelectionSheet final : public Sheet {
    Q_OBJECT

public:
    // Comes up with what was chosen last.
    ExpandSelectionSheet(const QString &title, const ExpandSelection &last, QWidget *mainWindow);

    // The pattern. Cancelled: its text is "", the rest stays as chosen.
    ExpandSelection getInput();

private:
    QComboBox *expandSelectionTarget;
    QComboBox *expandSelectionMethod;
    QLineEdit *expandSelectionText;
    QCheckBox *caseSensitive;
};

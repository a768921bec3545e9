#pragma once

#include "sheets/preferences/PreferencesPage.h"
#include "views/ClassicKeys.h"

class ElidedLabel;

// The keys of the Classic commands; stored with OK.
class KeysPage final : public PreferencesPage {
    Q_OBJECT

public:
    KeysPage(UserDefaults &defaults, const Mnemonics &taken);

    // What is not among the choices stays as it is; a key that is in no list gets an item.
    void select(const ClassicKeys::Choices &choices);
    ClassicKeys::Choices choices() const;

Q_SIGNALS:
    void restoreAsked();

private:
    struct Row {
        QComboBox *key; // each item with its code
        QComboBox *modifier; // by its place
        QLabel *warning;
        ElidedLabel *conflict;
    };

    Row addKeyRow(ClassicAction action);
    QWidget *conflictOf(Row &row);
    void showConflicts();

    std::array<Row, ClassicKeys::ActionCount> _rows {}; // in the order of the actions
};

#pragma once

#include "sheets/preferences/PreferencesPage.h"

class QLineEdit;
class QListWidget;

// The folders that no search goes into.
class SearchPage final : public PreferencesPage {
    Q_OBJECT

public:
    SearchPage(UserDefaults &defaults, const Mnemonics &taken);

    // A path, or a name of folders anywhere; stored at once. One that is there already is shown.
    void add(const QString &entry);

    QPushButton *chooseButton; // outlet

protected:
    bool eventFilter(QObject *watched, QEvent *event) override; // of the field

private:
    void addTyped();
    void removeSelected();
    void store();

    QStringList _entries;
    QLineEdit *_field;
    QListWidget *_list;
};

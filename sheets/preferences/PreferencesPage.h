#pragma once

#include "settings/SettingsKeys.h"
#include "widgets/Mnemonics.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class UserDefaults;

// What a page of the preferences is made of: rows of controls behind a column of labels. Main
// thread.
class PreferencesPage : public QWidget {
    Q_OBJECT

public:
    // What the rows' labels need; and what they get, so that all pages have one column.
    int labelWidth() const;
    void setLabelWidth(int width);

Q_SIGNALS:
    void settingWritten(Settings::Key key); // at once, as the person changed it

protected:
    // `taken`: the letters that have a meaning on every page.
    PreferencesPage(UserDefaults &defaults, const Mnemonics &taken);

    // Ends the rows: what is left of the page stays empty.
    void finish();
    // The label names its control and leads there by a letter; without one it names a group.
    QLabel *addLabel(const QString &text, QWidget *control = nullptr);
    void addRow(const QString &label, QWidget *control);
    void addBehindLabel(QWidget *control); // in a row of its own
    void addInColumns(const QList<QWidget *> &controls); // up to three, behind a label
    void addWide(QWidget *control);
    QLabel *addNote(const QString &text);
    // One that stores its key as it is clicked.
    QCheckBox *addCheckBox(Settings::Key key, bool absent, const QString &text);
    QComboBox *newChoice(const QString &name, const QStringList &items);
    QPushButton *newButton(const QString &text, const QString &name = {});
    void write(Settings::Key key, const QVariant &value);

    UserDefaults &defaults;

private:
    QGridLayout *_grid;
    Mnemonics _mnemonics;
    QList<QLabel *> _labels;
    int _row = 0;
};

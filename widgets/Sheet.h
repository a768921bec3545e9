#pragma once

#include "widgets/Mnemonics.h"

#include <QDialog>
#include <QTimer>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

// A dialog that belongs to a window and stands over it: plain text, its buttons in a row at the
// bottom. Return takes the default button where there is one, Escape and the close box reject.
// Main thread.
class Sheet : public QDialog {
    Q_OBJECT

public:
    // Shows the sheet and returns when it was answered; true for the default button.
    bool run();

    // What a sheet that is asked for now stands over: the dialog that has the keyboard, else the
    // window given, which may be none.
    static QWidget *topmost(QWidget *window);

protected:
    enum class TextStyle { Headline, Body };

    explicit Sheet(QWidget *below);

    // What stands above the buttons, and beside them all a picture, `side` logical pixels wide.
    QVBoxLayout &rows() const { return *_rows; }
    QLabel *addText(const QString &text, TextStyle style = TextStyle::Body);
    // The headline names the field, and leads there by a letter of its own.
    void addHeadlineOf(QWidget &field, const QString &text);
    void setPicture(const QIcon &icon, int side);
    // The buttons stand from left to right in the order they are added, the default one first.
    QPushButton *addButton(const QString &text);
    // The text with a letter of its own in this sheet, for another control with a text.
    QString marked(const QString &text) { return _mnemonics.marked(text); }
    // The letters given so far, for pages of which only one is seen.
    const Mnemonics &mnemonics() const { return _mnemonics; }
    // For a sheet that comes up unasked: a Return or a space meant for what was there before must
    // not press its button. So that is no default one, and another widget can have the focus.
    QPushButton *addQuietButton(const QString &text, QWidget &focused);
    // At the other end of the buttons' row; it keeps its place while it is out of sight.
    void addBesideButtons(QWidget &widget);

    // For a sheet that comes up unasked while the program works, and goes unasked. While the
    // keyboard is on its way back to the window below, as after a question, the sheet is not shown
    // yet: one that goes before it got the keyboard would take it along, and no key would reach the
    // window any more.
    void comeUp();
    void goAway();
    bool isUp() const { return _up; }

private:
    bool canShow() const;

    QHBoxLayout *_columns;
    QVBoxLayout *_rows;
    QHBoxLayout *_buttons;
    Mnemonics _mnemonics; // of the buttons and what else has a text
    bool _up = false;
    QTimer _waitForKeyboard;
};

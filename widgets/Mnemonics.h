#pragma once

#include <QSet>
#include <QString>

class QAction;
class QMenu;
class QMenuBar;

// Gives texts that stand together a key each: the letter behind "&". The texts are those of menu
// items and buttons, "&&" an ampersand of their own, and what stands behind a tab a key to show. A
// mark that a text has already counts as a wish. Main thread, as the functions below.
class Mnemonics final {
public:
    QString marked(const QString &text);
    static QString unmarked(const QString &text);

private:
    QSet<QChar> _taken;
};

// Marks the items that can be seen; the others lose their key.
void giveMnemonics(const QList<QAction *> &items);
// Marks the items of a menu each time it opens, for items come and go and change their texts.
void markWhenShown(QMenu &menu);
// Marks the titles of a bar, now and when this one of its menus comes or goes: the bar would open a
// menu by its key although it is not to be seen.
void markTitles(QMenuBar &bar, const QMenu &comingAndGoing);

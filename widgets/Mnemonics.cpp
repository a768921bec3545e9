#include "widgets/Mnemonics.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace {

const QChar Mark = u'&';

// A letter of a text, by its place, and how well it stands for it: the less, the better.
struct Letter {
    qsizetype place;
    int rank;
};

QList<Letter> letters(const QString &text, qsizetype wished)
{
    QList<Letter> found;
    const qsizetype tab = text.indexOf(u'\t');
    const qsizetype end = tab < 0 ? text.size() : tab;
    for (qsizetype i = 0; i < end; ++i) {
        if (!text[i].isLetterOrNumber())
            continue;
        const bool startsWord = i == 0 || !text[i - 1].isLetterOrNumber();
        const bool onEveryKeyboard = text[i].unicode() < 128;
        found.append({ i, i == wished ? 0 : 1 + (startsWord ? 0 : 1) + (onEveryKeyboard ? 0 : 2) });
    }
    std::ranges::stable_sort(found, {}, &Letter::rank);
    return found;
}

// Where the mark stands, or -1.
qsizetype placeOfMark(const QString &text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != Mark)
            continue;
        if (text[i + 1] != Mark)
            return i;
        ++i;
    }
    return -1;
}

} // namespace

QString Mnemonics::unmarked(const QString &text)
{
    const qsizetype mark = placeOfMark(text);
    return mark < 0 ? text : QString(text).remove(mark, 1);
}

QString Mnemonics::marked(const QString &text)
{
    QString plain = unmarked(text);
    const auto candidates = letters(plain, placeOfMark(text));
    for (const Letter &letter : candidates) {
        const QChar key = plain[letter.place].toLower();
        if (_taken.contains(key))
            continue;
        _taken.insert(key);
        return QString(plain).insert(letter.place, Mark);
    }
    return plain;
}

void giveMnemonics(const QList<QAction *> &items)
{
    Mnemonics mnemonics;
    for (QAction *item : items)
        item->setText(item->isVisible() ? mnemonics.marked(item->text())
                                        : Mnemonics::unmarked(item->text()));
}

void markWhenShown(QMenu &menu)
{
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] { giveMnemonics(menu.actions()); });
}

void markTitles(QMenuBar &bar, const QMenu &comingAndGoing)
{
    QObject::connect(comingAndGoing.menuAction(), &QAction::visibleChanged, &bar,
                     [&bar] { giveMnemonics(bar.actions()); });
    giveMnemonics(bar.actions());
}

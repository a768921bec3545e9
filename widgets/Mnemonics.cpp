#include "widgets/Mnemonics.h"

#include <QAction>
#include <QHash>
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
constexpr int WorstRank = 6;

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
        const int rank = i == 0 ? 1 : startsWord ? 2 : 3;
        found.append({ i, i == wished ? 0 : rank + (onEveryKeyboard ? 0 : 3) });
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

// Letters for items that are all known: one that finds none left takes one from an item that can
// do with another.
class SharedLetters final {
public:
    explicit SharedLetters(const QList<QAction *> &items)
    {
        for (const QAction *item : items) {
            _texts.append(Mnemonics::unmarked(item->text()));
            _letters.append(letters(_texts.last(), placeOfMark(item->text())));
        }
        // First what stands best for each: what only starts a later word of one item is no reason
        // for another to do without its first letter.
        QSet<qsizetype> without;
        for (qsizetype i = 0; i < items.size(); ++i)
            without.insert(i);
        for (int rank = 0; rank <= WorstRank; ++rank)
            for (qsizetype i = 0; i < items.size(); ++i)
                if (without.contains(i) && takeFree(i, rank))
                    without.remove(i);
        for (qsizetype i = 0; i < items.size(); ++i)
            if (QSet<QChar> tried; without.contains(i))
                give(i, tried);
    }
    QString marked(qsizetype item) const
    {
        for (const Letter &letter : _letters[item])
            if (_owners.value(key(item, letter), -1) == item)
                return QString(_texts[item]).insert(letter.place, Mark);
        return _texts[item];
    }

private:
    QChar key(qsizetype item, const Letter &letter) const
    {
        return _texts[item][letter.place].toLower();
    }
    // One that nobody has, of those that stand so well for it.
    bool takeFree(qsizetype item, int worst)
    {
        for (const Letter &letter : _letters[item])
            if (letter.rank <= worst && !_owners.contains(key(item, letter))) {
                _owners.insert(key(item, letter), item);
                return true;
            }
        return false;
    }
    bool give(qsizetype item, QSet<QChar> &tried)
    {
        if (takeFree(item, WorstRank))
            return true;
        for (const Letter &letter : _letters[item]) {
            const QChar wanted = key(item, letter);
            if (tried.contains(wanted))
                continue;
            tried.insert(wanted);
            if (give(_owners[wanted], tried)) {
                _owners[wanted] = item;
                return true;
            }
        }
        return false;
    }

    QStringList _texts;
    QList<QList<Letter>> _letters;
    QHash<QChar, qsizetype> _owners;
};

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
    QList<QAction *> visible;
    for (QAction *item : items) {
        if (item->isVisible() && !item->isSeparator())
            visible.append(item);
        else
            item->setText(Mnemonics::unmarked(item->text()));
    }
    SharedLetters shared(visible);
    for (qsizetype i = 0; i < visible.size(); ++i)
        visible[i]->setText(shared.marked(i));
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

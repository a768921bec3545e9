#pragma once

#include "files/ItemTrace.h"
#include "files/PathText.h"

#include <QList>

// Where an item lies. Of many in one folder the folder's text is held once.
struct ItemPlace {
    QString folder;
    QString name;

    static ItemPlace of(const QString &path)
    {
        return { PathText::parent(path), PathText::lastComponent(path) };
    }
    QString path() const { return PathText::joined(folder, name); }
};

// What an operation has really done with one item, so that it can be undone.
struct DoneItem {
    enum Way : quint8 { Copied, Moved, Renamed, NewFolder, NewFile, Linked, Packed, Trashed };
    enum Replaced : quint8 { Nothing, ForGood, InTrash };

    Way way = Copied;
    ItemPlace from {}; // where it was; nowhere, when it was made
    FileIdentity fromFolder {}; // of a moved item: another disk may be seen there later
    ItemPlace to {}; // where it is; nowhere, when it is in the Trash
    ItemTrace trace {}; // of the item right after
    Replaced replaced = Nothing; // at the place where it is
    ItemTrace old {}; // of what was replaced and is in the Trash

    bool wasMade() const { return way != Moved && way != Renamed && way != Trashed; }
    // The name that a person knows it by.
    QString name() const { return way == Trashed ? from.name : to.name; }
};

// What one operation has done, in that order. One item more than are remembered tells that there
// were too many.
class DoneItems final {
public:
    static constexpr qsizetype Most = 200'000;

    void add(const DoneItem &item)
    {
        if (_items.size() <= Most)
            _items.append(item);
    }
    void add(const DoneItems &items)
    {
        for (const DoneItem &item : items._items)
            add(item);
    }
    const QList<DoneItem> &items() const { return _items; }
    bool areTooMany() const { return _items.size() > Most; }

    // They were to be undone and could not be; once they may be tried again.
    void setRefused() { _wereRefused = true; }
    bool wereRefused() const { return _wereRefused; }

private:
    QList<DoneItem> _items;
    bool _wereRefused = false;
};

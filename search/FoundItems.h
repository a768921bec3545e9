#pragma once

#include "platform/MetadataIndex.h"

#include <QByteArrayView>
#include <QCollator>
#include <QHash>

#include <deque>
#include <memory>
#include <vector>

// What a search found so far, each item once, in the order of the names as the person's language
// has it. One thread, off the main one: keys take long to make. What was handed out may be read by
// another thread meanwhile.
class FoundItems final {
public:
    struct Item {
        MetadataQuery::Result result;
        QCollatorSortKey key;
        qint64 round = 0; // the last in which it was found
        bool walked = false; // found on the disk itself
    };
    // Sorted; keeps its items as long as it lives.
    struct Snapshot {
        std::shared_ptr<const std::deque<Item>> items;
        std::vector<const Item *> order;
        bool complete = false;
        bool cut = false; // some had no place
        qsizetype indexOf(const MetadataQuery::Result &result) const; // -1: none
    };

    FoundItems();

    // Begins to look anew; the items stay until dropOthers().
    void nextRound()
    {
        ++_round;
        _isFull = false;
    }
    enum class By { Index, Walk };
    void add(const QByteArray &folder, QByteArrayView name, By by);
    // Those that were not found in this round; but for those of earlier walks, if these are to
    // stay.
    void dropOthers(bool keepWalked);
    void drop(const std::vector<const Item *> &gone);

    // Whether there is anything that the last snapshot has not, or has too much.
    bool hasNews() const { return !_portion.empty() || _dropped; }
    // Without `complete`.
    Snapshot snapshot();
    const std::vector<const Item *> &order() const { return _order; } // of the last snapshot

private:
    void compact();

    QCollator _collator;
    std::shared_ptr<std::deque<Item>> _items = std::make_shared<std::deque<Item>>();
    QHash<QString, Item *> _byPath; // those that are not dropped
    std::vector<const Item *> _order;
    std::vector<const Item *> _portion; // not in the order yet
    bool _dropped = false;
    bool _isFull = false; // some of this round had no place
    qint64 _round = 0;
    QByteArray _folder; // of the last one, as they come one after the other
    QString _folderPath; // with a slash at its end
};

#include "operations/UndoHistory.h"

#include "base/Localized.h"
#include "files/FileName.h"

#include <numeric>

namespace {

struct Words {
    const char *one;
    const char *several = nullptr; // nothing where an operation does one alone
};

Words wordsFor(DoneItem::Way way)
{
    switch (way) {
    case DoneItem::Copied:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo copy of '%@'"),
                 QT_TRANSLATE_NOOP("Twinleaf", "Undo copy of %i items") };
    case DoneItem::Moved:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo move of '%@'"),
                 QT_TRANSLATE_NOOP("Twinleaf", "Undo move of %i items") };
    case DoneItem::Linked:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo alias '%@'"),
                 QT_TRANSLATE_NOOP("Twinleaf", "Undo %i aliases") };
    case DoneItem::Trashed:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo delete of '%@'"),
                 QT_TRANSLATE_NOOP("Twinleaf", "Undo delete of %i items") };
    case DoneItem::Renamed:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo rename of '%@'") };
    case DoneItem::NewFolder:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo new folder '%@'") };
    case DoneItem::NewFile:
        return { QT_TRANSLATE_NOOP("Twinleaf", "Undo new file '%@'") };
    case DoneItem::Packed:
        break;
    }
    return { QT_TRANSLATE_NOOP("Twinleaf", "Undo archive '%@'") };
}

} // namespace

void UndoHistory::add(const DoneItems &done)
{
    if (done.items().isEmpty())
        return;
    if (done.areTooMany())
        _operations.clear();
    else
        _operations.append(done);
    const auto count = [this] {
        return std::accumulate(
            _operations.begin(), _operations.end(), qsizetype(0),
            [](qsizetype sum, const DoneItems &each) { return sum + each.items().size(); });
    };
    while (_operations.size() > MostOperations || count() > DoneItems::Most)
        _operations.removeFirst();
    changed();
}

void UndoHistory::clear()
{
    if (isEmpty())
        return;
    _operations.clear();
    changed();
}

DoneItems UndoHistory::takeLast()
{
    DoneItems taken = _operations.takeLast();
    changed();
    return taken;
}

QString UndoHistory::text() const
{
    if (isEmpty())
        return {};
    const auto &items = _operations.last().items();
    const Words words = wordsFor(items.first().way);
    return items.size() == 1 || !words.several
        ? filled(localized(words.one), FileName::shown(items.first().name()))
        : filled(localized(words.several), int(items.size()));
}

void UndoHistory::changed() const
{
    if (_changeHandler)
        _changeHandler();
}

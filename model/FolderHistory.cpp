#include "model/FolderHistory.h"

namespace {

qsizetype step(FolderHistory::Way way)
{
    return way == FolderHistory::Way::Back ? -1 : 1;
}

} // namespace

void FolderHistory::arrive(const QString &folder)
{
    if (holds(_at) && _places[_at].folder == folder)
        return;
    _places.resize(_at + 1);
    _places.append({ folder });
    if (_places.size() > MostPlaces)
        _places.removeFirst();
    _at = _places.size() - 1;
}

void FolderHistory::select(const QString &name)
{
    if (holds(_at))
        _places[_at].selected = name;
}

const FolderHistory::Place *FolderHistory::next(Way way) const
{
    const qsizetype place = _at + step(way);
    return holds(place) ? &_places[place] : nullptr;
}

void FolderHistory::travelled(Way way, const QString &shown)
{
    if (!next(way))
        return;
    _at += step(way);
    if (_places[_at].folder != shown)
        _places[_at] = { shown };
    mergeWithNext(_at);
    mergeWithNext(_at - 1);
}

void FolderHistory::mergeWithNext(qsizetype place)
{
    if (!holds(place) || !holds(place + 1) || _places[place].folder != _places[place + 1].folder)
        return;
    _places.removeAt(place + 1);
    if (_at > place)
        --_at;
}

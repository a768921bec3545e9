#pragma once

#include "model/DoneItem.h"

#include <functional>

// The last operations that can be undone. Nothing of it outlives the program. Main thread.
class UndoHistory final {
public:
    static constexpr qsizetype MostOperations = 20;

    void setChangeHandler(std::function<void()> handler) { _changeHandler = std::move(handler); }

    // An operation that did nothing is none. Of one with too many items nothing is remembered, and
    // nothing of those before it, which would be taken for it.
    void add(const DoneItems &done);
    void clear();

    bool isEmpty() const { return _operations.isEmpty(); }
    DoneItems last() const { return _operations.last(); }
    DoneItems takeLast();
    // "Undo move of 3 items": the last one. "" without one.
    QString text() const;

private:
    void changed() const;

    QList<DoneItems> _operations;
    std::function<void()> _changeHandler;
};

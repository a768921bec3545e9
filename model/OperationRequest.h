#pragma once

#include "model/Side.h"

#include <QStringList>

// How the panes are to be refreshed, as the sender chose.
enum class UpdateBoth { Yes, No, DragDropCopy, DragDropMove, DragDropFinder };
QString updateBothWord(UpdateBoth value); // "YES", "NO", "DragDropCopy", ...
std::optional<UpdateBoth> updateBothFromWord(const QString &word);

// An entry that a request holds as a word: a value's own, or any other that was written there,
// which the door refuses; or the entry is missing.
template <class Value, auto wordOf, auto fromWord>
class RequestWord {
public:
    RequestWord() = default;
    RequestWord(Value value)
        : _word(wordOf(value))
    {
    }
    RequestWord(std::optional<Value> value)
    {
        if (value)
            _word = wordOf(*value);
    }
    explicit RequestWord(const QString &written)
        : _word(written)
    {
    }

    bool isMissing() const { return !_word; }
    bool isEmpty() const { return _word && _word->isEmpty(); }
    std::optional<Value> value() const { return _word ? fromWord(*_word) : std::nullopt; }
    friend bool operator==(const RequestWord &, const RequestWord &) = default;

private:
    std::optional<QString> _word;
};
using SideEntry = RequestWord<Side, sideWord, sideFromWord>;
using UpdateBothEntry = RequestWord<UpdateBoth, updateBothWord, updateBothFromWord>;

// What a pane asks of the file operations, of one type from the key to the worker, who gets a copy.
// The operations check it at their one door (operations/RequestValidation).
struct OperationRequest {
    QString source; // absolute path of the items' folder; of a rename the item's own path
    QString destination; // absolute path of the target folder or of a rename; "" without a target
    QStringList items; // names in the source; of a new folder or file its name; of a rename none
    SideEntry side {}; // the pane the request came from; missing when none was active
    UpdateBothEntry updateBoth {};
    unsigned cut = 0; // of a move, which cut of the clipboard it carries out; 0: none
    friend bool operator==(const OperationRequest &, const OperationRequest &) = default;
};

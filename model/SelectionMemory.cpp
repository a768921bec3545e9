#include "model/SelectionMemory.h"

QVariantMap SelectionMemory::toDictionary() const
{
    QVariantMap dictionary;
    for (auto it = _rows.begin(); it != _rows.end(); ++it)
        dictionary.insert(it.key(), it.value());
    return dictionary;
}

SelectionMemory SelectionMemory::fromDictionary(const QVariantMap &dictionary)
{
    SelectionMemory memory;
    for (auto it = dictionary.begin(); it != dictionary.end(); ++it) {
        bool number = false;
        const int row = it.value().toInt(&number);
        if (number)
            memory.setRow(row, it.key());
    }
    return memory;
}

#pragma once

#include "search/PackedItems.h"

#include <QHash>
#include <QMimeDatabase>

// Which files are worth being opened by the reader, by their names alone: those of a kind in which
// there may be text or properties. What has no kind by its name may be text; if it is not large, it
// is looked at. One thread.
class OfferedKinds final {
public:
    bool isOffered(const PackedItem &item);

private:
    enum class Answer : quint8 { Yes, No, Unknown };
    Answer answerFor(const QByteArray &suffix) const;

    QMimeDatabase _kinds;
    QHash<QByteArray, Answer> _bySuffix;
};

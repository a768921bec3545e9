#pragma once

#include "model/OperationRecord.h"
#include "model/RowSet.h"
#include "platform/Alerts.h"

#include <QStringList>

#include <optional>

class Listing;

// What a person is told or asked before items are copied or moved, by a command or by a drop.
namespace OperationAlerts {

// What a question is about, for its small print. Sizes are never looked up for it.
struct Subject {
    qsizetype count = 0;
    QString name {}; // of the first
    QString from {}; // the items' folder; "" where they come from several
    QString to {}; // "" without a target
    std::optional<qint64> bytes {}; // of all together, where they are known
};
Subject subjectOf(const Listing &listing, const RowSet &rows, const QString &to = {});
// Of the listing's items with these names; nothing when one is a folder or is not in it.
std::optional<qint64> sizeOf(const Listing &listing, const QStringList &names);
// "3 items, 2.9 MB, from Pictures to Desktop"; one item by its name.
QString described(const Subject &subject);

Alert intoItself(Operation copyOrMove);
Alert areYouSure(Operation copyOrMove, const Subject &subject);

} // namespace OperationAlerts

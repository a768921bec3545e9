#include "model/OperationAlerts.h"

#include "files/FileName.h"
#include "files/PathText.h"
#include "model/Listing.h"
#include "settings/SizeText.h"

#include <QSet>

using namespace Qt::StringLiterals;

OperationAlerts::Subject OperationAlerts::subjectOf(const Listing &listing, const RowSet &rows,
                                                    const QString &to)
{
    Subject subject { .count = rows.size(),
                      .name = listing[rows.first()].name(),
                      .from = listing.folder(),
                      .to = to,
                      .bytes = 0 };
    for (const int row : rows) {
        const auto bytes = listing[row].knownSize();
        if (!bytes) { // a folder's would have to be walked for
            subject.bytes.reset();
            break;
        }
        *subject.bytes += *bytes;
    }
    return subject;
}

std::optional<qint64> OperationAlerts::sizeOf(const Listing &listing, const QStringList &names)
{
    if (names.size() >= listing.size())
        return std::nullopt; // not all of so many can be in it
    QSet<QByteArray> wanted;
    for (const QString &name : names)
        wanted.insert(FileName::toBytes(name));
    qint64 total = 0;
    for (int row = FirstItemRow; row < listing.size() && !wanted.isEmpty(); ++row) {
        const Entry entry = listing[row];
        if (!wanted.remove(entry.nameBytes().toByteArray()))
            continue;
        const auto bytes = entry.knownSize();
        if (!bytes) // a folder's would have to be walked for
            return std::nullopt;
        total += *bytes;
    }
    return wanted.isEmpty() ? std::optional(total) : std::nullopt;
}

QString OperationAlerts::described(const Subject &subject)
{
    const auto nameOf = [](const QString &path) {
        return FileName::shown(PathText::lastComponent(path));
    };
    QStringList parts { subject.count == 1 ? FileName::shown(subject.name)
                                           : filled(localized("%i items"), int(subject.count)) };
    if (subject.bytes)
        parts.append(SizeText::getCalcFileSize(*subject.bytes));
    if (!subject.from.isEmpty() && !subject.to.isEmpty())
        parts.append(filled(localized("from %@ to %@"), nameOf(subject.from), nameOf(subject.to)));
    else if (!subject.from.isEmpty())
        parts.append(filled(localized("from %@"), nameOf(subject.from)));
    else if (!subject.to.isEmpty())
        parts.append(filled(localized("to %@"), nameOf(subject.to)));
    return parts.join(u", "_s);
}

Alert OperationAlerts::intoItself(Operation copyOrMove)
{
    return Alert::error(copyOrMove == Operation::Copy
                            ? localized("Item(s) cannot copied in itself!")
                            : localized("Item(s) cannot moved in itself!"),
                        localized("Ok"));
}

Alert OperationAlerts::areYouSure(Operation copyOrMove, const Subject &subject)
{
    return Alert::question(copyOrMove == Operation::Copy
                               ? localized("Are you sure that you want to copy the item(s)?")
                               : localized("Are you sure that you want to move the item(s)?"),
                           described(subject));
}

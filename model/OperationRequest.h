#pragma once

#include "model/Side.h"

#include <QStringList>
#include <QVariantMap>

// An operation request as it travels: a dictionary of exactly five entries, checked at one door
// (operations/RequestValidation) and a typed struct behind it.
using OperationRequest = QVariantMap;

namespace RequestKey {
inline const QString Source =
    QStringLiteral("Source"); // folder of the items; rename: full old path
inline const QString Destination =
    QStringLiteral("Destination"); // folder; rename: full new path; or ""
inline const QString Items = QStringLiteral("Items"); // QStringList of names relative to the source
inline const QString Side = QStringLiteral("Side"); // "Left", "left", "Right" or "right"
inline const QString UpdateBoth =
    QStringLiteral("UpdateBoth"); // one of the words of enum UpdateBoth
} // namespace RequestKey

enum class UpdateBoth { Yes, No, DragDropCopy, DragDropMove, DragDropFinder };
QString updateBothWord(UpdateBoth value); // "YES", "NO", "DragDropCopy", ...
std::optional<UpdateBoth> updateBothFromWord(const QString &word);

// Builds a request; without a side the entry is left out, and the request is refused at the door.
OperationRequest operationRequest(std::optional<Side> side, const QString &source,
                                  const QString &destination, const QStringList &items,
                                  UpdateBoth updateBoth);

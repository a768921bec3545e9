#pragma once

#include "platform/TrashCan.h"

// The Trash of the desktop, by descriptors alone: nothing is replaced, nothing is done through a
// link.
class DesktopTrashCan final : public TrashCan {
public:
    QList<TrashedItem> items(QStringList *unread) override;
    TrashEnd putBack(const TrashedItem &item, Folders folders) override;
    QList<TrashEnd> putBack(const QList<Gone> &items, Folders folders) override;
    TrashEnd remove(const TrashedItem &item) override;
};

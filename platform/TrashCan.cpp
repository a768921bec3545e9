#include "platform/TrashCan.h"

#include "files/PathText.h"

using namespace Qt::StringLiterals;

QString TrashedItem::path() const
{
    return PathText::joined(trash + "/files"_L1, name);
}

QString TrashedItem::formerName() const
{
    return origin.isEmpty() ? name : PathText::lastComponent(origin);
}

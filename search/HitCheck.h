#pragma once

#include "files/Descriptor.h"
#include "search/PackedItems.h"

#include <QByteArray>

// Whether what the index tells is still so on the disk: asked of each hit before it is shown. Any
// thread, one at a time; hits of one folder that come in a row cost little.
class HitCheck final {
public:
    bool exists(const QByteArray &folder, QByteArrayView name);
    // And it is the one that was read, with the same content.
    bool isUnchanged(const QByteArray &folder, QByteArrayView name, const PackedItem::Stamp &stamp);

private:
    bool look(const QByteArray &folder, QByteArrayView name, struct stat &status);

    QByteArray _folder;
    Descriptor _opened; // not open: there is no such folder
};

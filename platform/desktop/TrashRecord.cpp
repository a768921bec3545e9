#include "platform/desktop/TrashRecord.h"

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "platform/desktop/TrashFolder.h"

#include <gio/gio.h>

#include <QByteArrayList>

#include <algorithm>
#include <climits>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// The folder really meant, and the name of the item itself, which may be a link.
QString realPath(const QString &path)
{
    char folder[PATH_MAX];
    if (!realpath(FileName::toBytes(PathText::parent(path)).constData(), folder))
        return path;
    return PathText::joined(FileName::fromBytes(folder), PathText::lastComponent(path));
}

// The second of a name gets a number, before its first dot.
bool mayBeCalled(const QByteArray &name, const QByteArray &original)
{
    return name.startsWith(original.left(original.indexOf('.')));
}

std::optional<QByteArray> nameIn(const TrashPlace &trash, const FileIdentity &item,
                                 const QByteArray &original)
{
    DirectoryReader files;
    if (files.open(trash.files()))
        return std::nullopt;
    std::optional<QByteArray> found;
    files.read([&](const DirectoryItem &entry) {
        if (!mayBeCalled(entry.name.toByteArray(), original))
            return true;
        const auto status = files.status(entry.name.data(), Links::NoFollow);
        if (status && status->identity == item)
            found = entry.name.toByteArray();
        return !found;
    });
    return found;
}

bool write(const QByteArray &record, const QByteArray &place)
{
    char *text = nullptr;
    size_t length = 0;
    if (!g_file_get_contents(record.constData(), &text, &length, nullptr))
        return false;
    QByteArrayList lines = QByteArray(text, qsizetype(length)).split('\n');
    g_free(text);
    char *escaped = g_uri_escape_string(place.constData(), "/", FALSE);
    for (QByteArray &line : lines) {
        if (line.startsWith("Path="))
            line = QByteArray("Path=") + escaped;
    }
    g_free(escaped);
    const QByteArray changed = lines.join('\n');
    return g_file_set_contents(record.constData(), changed.constData(), changed.size(), nullptr);
}

} // namespace

bool TrashRecord::setOrigin(const FileIdentity &item, const QString &path, const QString &origin)
{
    const QByteArray original = FileName::toBytes(PathText::lastComponent(path));
    const QString place = realPath(origin);
    const auto change = [&](const TrashPlace &trash) {
        const auto name = nameIn(trash, item, original);
        // A volume's Trash knows places below its top.
        const QString top = trash.base == u"/" ? QString() : trash.base;
        const bool isBelow = trash.onVolume && place.startsWith(top + u'/');
        return name
            && write(FileName::toBytes(trash.records()) + '/' + *name + ".trashinfo",
                     FileName::toBytes(isBelow ? place.mid(top.size() + 1) : place));
    };
    return change(TrashPlace::ofHome())
        || std::ranges::any_of(TrashPlace::ofVolumesOf({ realPath(path) }), change);
}

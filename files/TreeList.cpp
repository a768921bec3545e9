#include "files/TreeList.h"

#include "files/Descriptor.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FolderMark.h"
#include "files/PathText.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <fcntl.h>
#include <sys/xattr.h>

namespace {

using SystemCalls::errorOf;

// Through the descriptor's own path: there is no call for a name that is not to be opened.
bool hasAttributes(int folder, const QByteArray &name)
{
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(folder) + '/' + name;
    char names[4096];
    const ssize_t length = ::llistxattr(path.constData(), names, sizeof names);
    if (length < 0) // where it cannot be told, whoever copies them is to fail
        return errno != ENOTSUP && errno != ENOENT;
    return QByteArrayView(names, length).contains("user.");
}

// Enough to go through it to what is inside.
Descriptor openHeld(int folder, const QByteArray &name)
{
    return Descriptor(::openat(folder, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

QString below(const QString &above, const QByteArray &name)
{
    const QString shown = FileName::fromBytes(name);
    return above.isEmpty() ? shown : PathText::joined(above, shown);
}

} // namespace

TreeList TreeList::of(int folder, const QByteArray &name)
{
    TreeList list;
    list._keepsInodes = keepsInodes(folder);
    if (const auto status = statxStatus(folder, name, Links::NoFollow))
        list.add(folder, name, *status);
    else
        list._failure = errorOf(-1);
    return list;
}

void TreeList::add(int folder, const QByteArray &name, const FileStatus &status)
{
    const auto at = _entries.size();
    _entries.push_back({ name, qint32(at + 1), status.kind, status.links < 2, status.identity,
                         status.size, status.modified, status.changed });
    if (status.kind == FileKind::Regular)
        _bytes += status.size;
    if (status.kind != FileKind::Directory)
        return;
    DirectoryReader reader;
    auto failed = reader.openAt(folder, name);
    std::vector<std::pair<QByteArray, FileStatus>> inside;
    if (!failed)
        failed = reader.read([&](const DirectoryItem &item) {
            if (const auto found = reader.status(item.name.data(), Links::NoFollow))
                inside.emplace_back(item.name.toByteArray(), *found);
            return true;
        });
    if (failed)
        _failure = failed;
    for (const auto &[inner, found] : inside)
        add(reader.descriptor(), inner, found);
    _entries[at].end = qint32(_entries.size());
}

QStringList TreeList::withAttributes(int folder) const
{
    QStringList found;
    if (!_entries.empty())
        addWithAttributes(folder, 0, {}, found);
    return found;
}

void TreeList::addWithAttributes(int folder, qsizetype at, const QString &path,
                                 QStringList &found) const
{
    const Entry &entry = _entries[size_t(at)];
    if (entry.kind != FileKind::Symlink && hasAttributes(folder, entry.name))
        found.append(path);
    if (entry.kind != FileKind::Directory)
        return;
    const Descriptor opened = openHeld(folder, entry.name);
    for (qsizetype inner = at + 1; inner < entry.end; inner = _entries[size_t(inner)].end)
        addWithAttributes(opened.number(), inner, below(path, _entries[size_t(inner)].name), found);
}

bool TreeList::isIn(const TreeList &copy, qsizetype at, qsizetype other, int folder) const
{
    const Entry &mine = _entries[size_t(at)];
    const Entry &copied = copy._entries[size_t(other)];
    if (mine.kind != copied.kind)
        return false;
    if (mine.kind == FileKind::Regular || mine.kind == FileKind::Symlink)
        return mine.size == copied.size;
    if (mine.kind != FileKind::Directory)
        return true;
    QHash<QByteArray, qsizetype> inside;
    for (qsizetype inner = other + 1; inner < copied.end; inner = copy._entries[size_t(inner)].end)
        inside.insert(copy._entries[size_t(inner)].name, inner);
    const bool mayMiss = folder >= 0;
    Descriptor opened;
    if (mayMiss) {
        opened = openHeld(folder, mine.name);
        folder = opened.number();
    }
    for (qsizetype inner = at + 1; inner < mine.end; inner = _entries[size_t(inner)].end) {
        const Entry &entry = _entries[size_t(inner)];
        const auto found = inside.constFind(entry.name);
        if (found != inside.cend() ? isIn(copy, inner, *found, mayMiss ? folder : -1)
                                   : mayMiss && entry.kind != FileKind::Symlink
                    && ::faccessat(folder, entry.name, R_OK, AT_EACCESS) != 0
                    && (errno == EACCES || errno == ENOENT))
            continue;
        return false;
    }
    return true;
}

bool TreeList::isWholeIn(const TreeList &copy) const
{
    return !_entries.empty() && !copy._entries.empty() && !_failure && !copy._failure
        && isIn(copy, 0, 0, -1);
}

bool TreeList::isReadableWholeIn(const TreeList &copy, int folder) const
{
    return !_entries.empty() && !copy._entries.empty() && isIn(copy, 0, 0, folder);
}

// Where the kernel makes the inode numbers up, it may have made up others by now, and the time of
// the last change with them.
bool TreeList::isUnchanged(const Entry &entry, const FileStatus &now) const
{
    if (now.kind != entry.kind || (_keepsInodes && now.identity != entry.identity))
        return false;
    // A folder's own times change with what is removed from it, that of a file with several names
    // when one of them goes.
    return entry.kind == FileKind::Directory
        || (now.size == entry.size && now.modified == entry.modified
            && (now.changed == entry.changed || !entry.alone || !_keepsInodes));
}

QStringList TreeList::removeFrom(int folder) const
{
    QStringList left;
    if (!_entries.empty())
        removeEntry(folder, 0, {}, left);
    return left;
}

void TreeList::removeEntry(int folder, qsizetype at, const QString &above, QStringList &left) const
{
    const Entry &entry = _entries[size_t(at)];
    const QString path = below(above, entry.name);
    const auto now = statxStatus(folder, entry.name, Links::NoFollow);
    if (!now) {
        if (errno != ENOENT)
            left.append(path);
        return;
    }
    if (!isUnchanged(entry, *now)) {
        left.append(path);
        return;
    }
    if (entry.kind != FileKind::Directory) {
        if (SystemCalls::unlinkat(folder, entry.name, 0) != 0)
            left.append(path);
        return;
    }
    DirectoryReader reader;
    if (reader.openAt(folder, entry.name)) {
        left.append(path);
        return;
    }
    const auto opened = statusOf(reader.descriptor());
    if (!opened || opened->identity != now->identity) {
        left.append(path);
        return;
    }
    const auto before = left.size();
    QSet<QByteArray> known;
    for (qsizetype inner = at + 1; inner < entry.end; inner = _entries[size_t(inner)].end) {
        known.insert(_entries[size_t(inner)].name);
        removeEntry(reader.descriptor(), inner, path, left);
    }
    if (left.size() == before && SystemCalls::unlinkat(folder, entry.name, AT_REMOVEDIR) == 0)
        return;
    // What came later is named by itself.
    reader.read([&](const DirectoryItem &item) {
        if (!known.contains(item.name.toByteArray()))
            left.append(below(path, item.name.toByteArray()));
        return true;
    });
    if (left.size() == before)
        left.append(path);
}

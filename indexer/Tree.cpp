#include "indexer/Tree.h"

#include "files/FileName.h"
#include "files/FileStatus.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr int FolderOnly = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr int DocumentsAtOnce = 50; // that are removed; each takes its words along

Descriptor openIn(int folder, const QByteArray &name)
{
    return Descriptor(::openat(folder, name, FolderOnly | O_NOFOLLOW));
}

// What a folder that does not open means: it is gone or closed to us; else the machine is short of
// something, and nothing is known.
bool isAway(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == EACCES
        || error == EPERM;
}

bool isShortage(int error)
{
    return error == EMFILE || error == ENFILE || error == ENOMEM;
}

// The same folder by a path that nobody can exchange meanwhile.
QByteArray pathOfDescriptor(int folder)
{
    return "/proc/self/fd/" + QByteArray::number(folder);
}

quint64 inodeOf(int folder)
{
    struct stat status { };
    return ::fstat(folder, &status) == 0 ? status.st_ino : 0;
}

} // namespace

Tree::Tree(IndexWriter &index, DocumentWriter &documents, Watches &watches, WalkRules rules)
    : _index(index)
    , _documents(documents)
    , _watches(watches)
    , _rules(std::move(rules))
    , _homePath(FileName::toBytes(IndexFile::homePath()))
{
}

bool Tree::refresh(const GoOn &goOn)
{
    _home = Descriptor(::open(_homePath, FolderOnly)); // it may be a link
    if (!_home.isOpen())
        return false;
    _rules.setHome(_home.number());
    _path = _homePath;
    const quint64 inode = inodeOf(_home.number());
    const bool isNew = !_index.placeOf(IndexFile::Home);
    if (isNew)
        _index.addFolder(0, {}, inode);
    else if (_index.folderWithInode(inode) != IndexFile::Home)
        _index.setInode(IndexFile::Home, inode);
    return visit(_home.number(), IndexFile::Home, isNew, Depth::All, goOn);
}

bool Tree::update(qint64 folder, const GoOn &goOn)
{
    if (folder == IndexFile::Home && !homeIsInPlace())
        return false;
    const Descriptor opened = open(folder);
    // Gone: the folder that it was in tells.
    return !opened.isOpen() || visit(opened.number(), folder, false, Depth::NewOnly, goOn);
}

bool Tree::homeIsInPlace() const
{
    struct stat there { };
    struct stat walked { };
    return _home.isOpen() && ::stat(_homePath, &there) == 0 && ::fstat(_home.number(), &walked) == 0
        && there.st_ino == walked.st_ino && there.st_dev == walked.st_dev;
}

bool Tree::chainOf(qint64 folder, QByteArrayList &names)
{
    names.clear();
    for (qint64 at = folder; at != IndexFile::Home;) {
        const auto place = _index.placeOf(at);
        // No path is longer, so a circle could only be damage.
        if (!place || place->parent < IndexFile::Home || names.size() > PATH_MAX)
            return false;
        names.prepend(place->name);
        at = place->parent;
    }
    return true;
}

Descriptor Tree::open(qint64 folder)
{
    QByteArrayList names;
    if (!_home.isOpen() || !chainOf(folder, names))
        return {};
    _path = _homePath;
    Descriptor opened(::openat(_home.number(), ".", FolderOnly));
    for (const QByteArray &name : std::as_const(names)) {
        opened = openIn(opened.number(), name);
        if (!opened.isOpen())
            return {};
        _path += '/' + name;
    }
    return opened;
}

bool Tree::visit(int folder, qint64 id, bool isNew, Depth depth, const GoOn &goOn)
{
    // Before it is read: what changes from now on is told.
    _watches.add(id, pathOfDescriptor(folder));
    FolderScan scan;
    if (scan.read(folder))
        return goOn();
    if (id != IndexFile::Home && scan.hasCacheMark && WalkRules::isMarkedAsCache(folder)) {
        putAside(id);
        return goOn();
    }
    const QByteArray items = isNew ? QByteArray() : _index.itemsIn(id);
    if (items.isNull() || items != scan.items)
        _index.setItems(id, scan.items, scan.newest,
                        isNew || depth == Depth::All ? IndexFile::Pending::Unknown
                                                     : IndexFile::Pending::Changed);
    scan.items = {};
    if (!goOn())
        return false;

    QHash<QByteArray, IndexWriter::Folder> known;
    if (!isNew) {
        for (IndexWriter::Folder &subfolder : _index.foldersIn(id))
            known.insert(subfolder.name, subfolder);
    }
    for (const FolderScan::Subfolder &found : std::as_const(scan.subfolders)) {
        if (!_rules.mayEnter(_path, found.name)
            || !_rules.isOnHomeDisk(found.device, found.mountPoint)
            || _path.size() + found.name.size() + 2 > PATH_MAX)
            continue;
        const auto same = known.constFind(found.name);
        const bool isKnown = same != known.constEnd() && same->inode == found.inode;
        // One that went for a moment may be another by now, and nobody told what is in it.
        if (isKnown && depth == Depth::NewOnly && !_watches.hasEnded(same->id)) {
            known.erase(same);
            continue;
        }
        const qsizetype length = _path.size();
        // Another one of the same name leaves the place first.
        if (same != known.constEnd() && !isKnown) {
            putAside(same->id);
            known.erase(same);
        }
        const std::optional<IndexWriter::Folder> before =
            isKnown ? std::optional(known.take(found.name)) : std::nullopt;
        _path += '/' + found.name;
        const bool goesOn = visitSubfolder(folder, id, found, before ? &*before : nullptr, goOn);
        _path.truncate(length);
        if (!goesOn)
            return false;
    }
    for (const IndexWriter::Folder &gone : std::as_const(known)) {
        // It may have turned up under another name just now.
        const auto place = _index.placeOf(gone.id);
        if (place && place->parent == id && place->name == gone.name)
            putAside(gone.id);
    }
    return true;
}

bool Tree::visitSubfolder(int folder, qint64 id, const FolderScan::Subfolder &found,
                          const IndexWriter::Folder *known, const GoOn &goOn)
{
    const Descriptor opened = openIn(folder, found.name);
    if (!opened.isOpen()) {
        const int error = errno;
        if (known && isAway(error))
            putAside(known->id);
        // Without what is in it, the pass is none.
        return !isShortage(error) && goOn();
    }
    if (known)
        return visit(opened.number(), known->id, false, Depth::All, goOn);
    if (const auto moved = folderThatMoved(found.inode)) {
        _index.moveFolder(*moved, id, found.name);
        return visit(opened.number(), *moved, false, Depth::All, goOn);
    }
    if (WalkRules::isMarkedAsCache(opened.number()))
        return goOn();
    const qint64 added = _index.addFolder(id, found.name, found.inode);
    return visit(opened.number(), added, true, Depth::All, goOn);
}

// Also one whose old place was not looked at since.
std::optional<qint64> Tree::folderThatMoved(quint64 inode)
{
    const auto known = _index.folderWithInode(inode);
    if (!known || *known == IndexFile::Home)
        return std::nullopt;
    const QByteArray here = _path;
    const Descriptor opened = open(*known);
    _path = here;
    if (opened.isOpen() && inodeOf(opened.number()) == inode)
        return std::nullopt;
    return known;
}

void Tree::putAside(qint64 folder)
{
    _index.moveFolder(folder, IndexFile::Nowhere, QByteArray::number(folder));
}

bool Tree::removeSome()
{
    const auto aside = _index.firstFolderIn(IndexFile::Nowhere);
    if (!aside)
        return false;
    // Those in it are aside too, until it is their turn.
    for (const IndexWriter::Folder &inner : _index.foldersIn(*aside))
        putAside(inner.id);
    if (!_documents.removeIn(*aside, DocumentsAtOnce))
        return true;
    _watches.remove(*aside);
    _index.removeFolder(*aside);
    return true;
}

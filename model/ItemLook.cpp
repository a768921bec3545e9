#include "model/ItemLook.h"

#include "files/FileName.h"
#include "files/FolderWatch.h"
#include "files/PathText.h"
#include "model/FileQueries.h"

#include <dirent.h>

using namespace Qt::StringLiterals;

ItemLook::ItemLook(const QString &folder, const ListingOptions &options)
    : _folder(folder)
    , _options(options)
    , _folderOfNames(FileName::toBytes(folder))
    , _hiddenRule(folder)
{
    if (!_folderOfNames.endsWith('/'))
        _folderOfNames += '/';
}

std::error_code ItemLook::open(FolderWatch *watch)
{
    if (const auto error = _reader.open(_folder))
        return error;
    const auto status = statusOf(_reader.descriptor());
    _marks = status && FileFlags::devicePossiblyHasMarks(status->identity.device);
    bool isLocal = true;
    if (_mounts.hasSlow()) {
        _place = linkTarget(u"/proc/self/fd/%1"_s.arg(_reader.descriptor())).value_or(_folder);
        for (const Mount &mount : _mounts.mounts()) {
            if (PathText::parent(mount.point) == _place
                && !_mounts.isLocal(*_mounts.mountOf(mount.point))) // the topmost on the point
                _slowMounts.insert(FileName::toBytes(PathText::lastComponent(mount.point)));
        }
        const Mount *own = _mounts.mountOf(_place);
        isLocal = !own || _mounts.isLocal(*own);
        // On a slow mount everything is asked of it anyway, its links too.
        if (!isLocal)
            _place.clear();
    }
    // Before the first name is read. Of what others change there, a server tells nothing.
    if (watch && isLocal)
        watch->begin(_reader.descriptor());
    return {};
}

bool ItemLook::hidesName(QByteArrayView name)
{
    return !_options.showHiddenFiles && _hiddenRule.hidesName(name);
}

// Whether a link leads to where another machine or program would have to answer for it.
bool ItemLook::mayHang(const QByteArray &name, unsigned char type) const
{
    if (_place.isEmpty() || (type != DT_LNK && type != DT_UNKNOWN))
        return false;
    return _mounts.slowMountOnTheWay(_place, FileName::fromBytes(name));
}

bool ItemLook::look(const char *name, unsigned char type, ListingRecord &record,
                    const QByteArray &folderOfNames,
                    const std::optional<FileStatus> &own) const // worker thread
{
    const QByteArray bytes = QByteArray::fromRawData(name, record.nameLength);
    const auto isPackage = [&] { return FileKinds::isPackageName(FileName::fromBytes(bytes)); };
    if (_slowMounts.contains(bytes)) {
        record.kind = FileKind::Directory;
        record.isDirectory = true;
        record.isFolder = !isPackage();
        return true;
    }
    const bool follows = !mayHang(bytes, type);
    const Links links = follows && _options.traverseLinks ? Links::Follow : Links::NoFollow;
    const auto status = own && own->kind != FileKind::Symlink ? own : _reader.status(name, links);
    if (status) {
        record.hasStatus = true;
        record.kind = status->kind;
        record.modified = status->modified;
        record.isDirectory = status->kind == FileKind::Directory;
        if (status->kind == FileKind::Symlink && follows) {
            // Attributes are the link's own; whether it opens as a folder is its target's
            // matter.
            const auto target = _reader.status(name, Links::Follow);
            record.isDirectory = target && target->kind == FileKind::Directory;
        }
        record.size = record.isDirectory ? 0 : status->size;
    } else if (type == DT_LNK || (type == DT_UNKNOWN && _reader.status(name, Links::NoFollow))) {
        record.kind = FileKind::Symlink;
        record.isDangling = true;
    }
    record.isLink = type == DT_LNK || record.kind == FileKind::Symlink;
    record.isFolder = record.kind == FileKind::Directory && !isPackage();
    if (!_marks || !status || !follows) // marks are those of a link's target
        return true;
    const FileFlags::Marks found =
        FileFlags::marks(folderOfNames.isEmpty() ? name : (folderOfNames + bytes).constData());
    record.label = quint8(FileQueries::labelOfBits(found.labelBits));
    return _options.showHiddenFiles || !HiddenRule::hides(found);
}

ListingRecord ItemLook::parent() const
{
    ListingRecord record;
    record.kind = FileKind::Directory;
    record.isDirectory = true;
    record.isFolder = true;
    record.nameLength = 2;
    if (const auto folder =
            fileStatus(_folder, _options.traverseLinks ? Links::Follow : Links::NoFollow)) {
        record.hasStatus = true;
        record.modified = folder->modified;
    }
    return record;
}

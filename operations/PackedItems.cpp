#include "operations/PackedItems.h"

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/PathText.h"

#include <dirent.h>

#include <utility>
#include <vector>

namespace {

// A folder that many links lead to is packed as often; past this, nobody meant it.
constexpr double MostRepeated = 20; // times
constexpr double AlwaysFine = 100'000; // entries

} // namespace

PackedItems::PackedItems(std::optional<FileIdentity> destination, std::optional<FileIdentity> old,
                         std::function<bool()> isStopped)
    : _destination(destination)
    , _old(old)
    , _isStopped(std::move(isStopped))
{
}

bool PackedItems::leadsInCircles(const QString &path)
{
    const auto status = fileStatus(path, Links::Follow);
    if (!status)
        return false;
    lookAt(path, status->identity);
    if (status->kind != FileKind::Directory)
        return false;
    const Seen seen = enter(path, status->identity);
    if (seen.circular)
        return true;
    if (seen.entries <= AlwaysFine || seen.entries <= MostRepeated * _entries)
        return false;
    _circles.append(path);
    return true;
}

void PackedItems::lookAt(const QString &path, const FileIdentity &identity)
{
    if (_old == identity)
        _pathOfOld = path;
}

PackedItems::Seen PackedItems::enter(const QString &path, const FileIdentity &identity)
{
    if (const auto seen = _seen.constFind(identity); seen != _seen.cend()) {
        if (seen->ended)
            return *seen;
        _circles.append(path);
        return { .circular = true };
    }
    _seen.insert(identity, {});
    _holdsDestination = _holdsDestination || _destination == identity;

    struct Entry {
        QByteArray name;
        unsigned char type;
    };
    std::vector<Entry> entries;
    {
        // Closed before the folders in it are entered: depth costs no descriptors.
        DirectoryReader reader;
        auto failed = reader.open(path);
        if (!failed)
            failed = reader.read([&](const DirectoryItem &item) {
                entries.push_back({ item.name.toByteArray(), item.type });
                return true;
            });
        if (failed)
            _closed.append(path);
    }
    Seen result { .ended = true, .entries = double(entries.size()) };
    _entries += double(entries.size());
    for (const Entry &entry : entries) {
        if (_isStopped())
            break;
        // Of a plain file nothing counts but whether it is the old archive.
        if (entry.type == DT_REG && !_old)
            continue;
        const QString inner = PathText::joined(path, FileName::fromBytes(entry.name));
        const auto status = fileStatus(inner, Links::Follow);
        if (!status)
            continue;
        lookAt(inner, status->identity);
        if (status->kind != FileKind::Directory)
            continue;
        const Seen seen = enter(inner, status->identity);
        result.circular = result.circular || seen.circular;
        result.entries += seen.entries;
    }
    _seen.insert(identity, result);
    return result;
}

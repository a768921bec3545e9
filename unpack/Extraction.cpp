#include "unpack/Extraction.h"

#include "files/StatxStatus.h"
#include "unpack/Cancellation.h"
#include "unpack/ZipFile.h"

#include <QByteArrayList>

#include <archive.h>
#include <archive_entry.h>

#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t BlockSize = 128 * 1024; // bytes
constexpr unsigned OwnerMayAll = S_IRWXU;

struct ReaderEnd {
    void operator()(archive *reader) const { archive_read_free(reader); }
};
struct WriterEnd {
    void operator()(archive *writer) const { archive_write_free(writer); }
};
using Reader = std::unique_ptr<archive, ReaderEnd>;
using Writer = std::unique_ptr<archive, WriterEnd>;

enum class Member { Written, Refused, Failed };

void complain(const char *name, const char *reason)
{
    std::fprintf(stderr, "%s: %s\n", name ? name : "?", reason ? reason : "cannot be unpacked");
}

// `zip` must live as long as the reader.
Reader openArchive(const QByteArray &path, ArchiveKind kind, ZipFile &zip)
{
    Reader reader(archive_read_new());
    bool opened = false;
    if (kind == ArchiveKind::PkZip) {
        // By its directory alone: without one the archive is cut short.
        archive_read_support_format_zip_seekable(reader.get());
        opened = zip.open(reader.get(), path);
    } else {
        archive_read_support_format_cpio(reader.get());
        archive_read_support_filter_gzip(reader.get());
        archive_read_support_filter_bzip2(reader.get());
        opened =
            archive_read_open_filename(reader.get(), path.constData(), BlockSize) == ARCHIVE_OK;
    }
    if (opened)
        return reader;
    complain(path.constData(), archive_error_string(reader.get()));
    return nullptr;
}

Writer openDisk()
{
    Writer disk(archive_write_disk_new());
    archive_write_disk_set_options(disk.get(),
                                   ARCHIVE_EXTRACT_TIME | ARCHIVE_EXTRACT_SECURE_NODOTDOT
                                       | ARCHIVE_EXTRACT_SECURE_SYMLINKS
                                       | ARCHIVE_EXTRACT_SECURE_NOABSOLUTEPATHS);
    return disk;
}

class Extractor {
public:
    Extractor(const ZipFile &zipFile, archive *reader, archive *disk)
        : zip(zipFile)
        , _reader(reader)
        , _disk(disk)
    {
    }

    Member unpack(archive_entry *entry)
    {
        const QByteArray name = zip.realName(archive_entry_pathname(entry));
        archive_entry_copy_pathname(entry, name.constData());
        if (const char *reason = refusal(entry, name)) {
            complain(name.constData(), reason);
            return Member::Refused;
        }
        const bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
        const unsigned permissions = archive_entry_perm(entry) & 0777; // never set-id
        archive_entry_set_perm(entry, isFolder ? permissions | OwnerMayAll : permissions);
        if (archive_write_header(_disk, entry) < ARCHIVE_WARN) {
            const bool refused = archive_errno(_disk) != ENOSPC && archive_errno(_disk) != EDQUOT;
            complain(name.constData(), archive_error_string(_disk));
            return refused ? Member::Refused : Member::Failed;
        }
        if (!copyContent(name))
            return Member::Failed;
        if (archive_write_finish_entry(_disk) < ARCHIVE_WARN) {
            complain(name.constData(), archive_error_string(_disk));
            return Member::Failed;
        }
        if (isFolder)
            noteFolder(name, permissions);
        return Member::Written;
    }

    QMap<QByteArray, Extracted::ClosedFolder> closedFolders;

private:
    static const char *refusal(archive_entry *entry, const QByteArray &name)
    {
        if (name.isEmpty())
            return "a member without a name";
        const auto type = archive_entry_filetype(entry);
        const bool isLink = archive_entry_hardlink(entry) != nullptr;
        if (!isLink && type != AE_IFREG && type != AE_IFDIR && type != AE_IFLNK)
            return "a device or another special file";
        QByteArray path = name;
        while (path.size() > 1 && path.endsWith('/'))
            path.chop(1); // else a link would be followed
        struct stat status;
        if (lstat(path.constData(), &status) == 0 && (type != AE_IFDIR || !S_ISDIR(status.st_mode)))
            return "the archive holds this name twice";
        return nullptr;
    }

    void noteFolder(const QByteArray &name, unsigned permissions)
    {
        QByteArrayList parts = name.split('/');
        parts.removeAll("");
        parts.removeAll(".");
        const QByteArray path = parts.join('/');
        closedFolders.remove(path);
        const auto status = statxStatus(AT_FDCWD, path, Links::NoFollow);
        if (status && (permissions & OwnerMayAll) != OwnerMayAll)
            closedFolders.insert(path, { permissions, status->identity });
    }

    bool copyContent(const QByteArray &name)
    {
        const void *bytes = nullptr;
        size_t count = 0;
        la_int64_t offset = 0;
        int result = ARCHIVE_OK;
        while (!Cancellation::asked()
               && (result = archive_read_data_block(_reader, &bytes, &count, &offset))
                   == ARCHIVE_OK) {
            if (archive_write_data_block(_disk, bytes, count, offset) < ARCHIVE_OK) {
                complain(name.constData(), archive_error_string(_disk));
                return false;
            }
        }
        if (Cancellation::asked())
            return false;
        if (result != ARCHIVE_EOF)
            complain(name.constData(), archive_error_string(_reader));
        return result == ARCHIVE_EOF;
    }

    const ZipFile &zip;
    archive *_reader;
    archive *_disk;
};

} // namespace

std::optional<Extracted> extract(const QByteArray &path, ArchiveKind kind)
{
    ZipFile zip;
    const Reader reader = openArchive(path, kind, zip);
    if (!reader)
        return std::nullopt;
    const Writer disk = openDisk();
    Extractor extractor(zip, reader.get(), disk.get());
    Extracted result;
    archive_entry *entry = nullptr;
    int header = ARCHIVE_OK;
    while (!Cancellation::asked()
           && (header = archive_read_next_header(reader.get(), &entry)) >= ARCHIVE_WARN
           && header != ARCHIVE_EOF) {
        const Member member = extractor.unpack(entry);
        if (member == Member::Failed)
            return std::nullopt;
        result.memberRefused = result.memberRefused || member == Member::Refused;
    }
    if (Cancellation::asked())
        return std::nullopt;
    if (header != ARCHIVE_EOF) {
        complain(path.constData(), archive_error_string(reader.get()));
        return std::nullopt;
    }
    // Now the folders get their times.
    if (archive_write_close(disk.get()) < ARCHIVE_WARN) {
        complain(path.constData(), archive_error_string(disk.get()));
        return std::nullopt;
    }
    result.closedFolders = extractor.closedFolders;
    return result;
}

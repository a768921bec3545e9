#include "files/Staging.h"

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FolderMark.h"
#include "files/PathText.h"
#include "files/Rename.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"

#include <QUuid>

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

QByteArray StagedName::text() const
{
    QByteArray text = char(role) + QByteArray::number(number) + ' ';
    text += name.left(NAME_MAX - text.size());
    return text;
}

std::optional<StagedName> StagedName::fromText(const QByteArray &text)
{
    const qsizetype blank = text.indexOf(' ');
    bool isNumber = false;
    const quint64 number = blank > 1 ? text.mid(1, blank - 1).toULongLong(&isNumber) : 0;
    if (!isNumber || !QByteArray("mioutr").contains(text[0]))
        return std::nullopt;
    return StagedName { Role(text[0]), number, text.mid(blank + 1) };
}

bool handOut(int staging, const QString &path, int from, const QByteArray &entry,
             const QByteArray &name, const TakePath &take)
{
    // Another folder may stand at the name by now.
    const auto there = fileStatus(path, Links::NoFollow);
    const auto mine = statusOf(staging);
    if (!there || !mine || there->identity != mine->identity)
        return false;
    QByteArray holder;
    std::error_code unmade;
    quint64 number = 0;
    do {
        holder = StagedName { StagedName::Trash, ++number, {} }.text();
        unmade = errorOf(SystemCalls::mkdirat(staging, holder, 0700));
    } while (unmade == std::errc::file_exists);
    if (unmade)
        return false;
    const Descriptor opened(
        ::openat(staging, holder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    bool taken = false;
    if (!Rename::noReplace(from, entry, opened.number(), name)) {
        taken = take(PathText::joined(PathText::joined(path, FileName::fromBytes(holder)),
                                      FileName::fromBytes(name)));
        if (!taken)
            Rename::noReplace(opened.number(), name, from, entry);
    }
    ::unlinkat(staging, holder, AT_REMOVEDIR);
    return taken;
}

Staging::Staging(int folder, QString path, const Journal &journalToWrite)
    : _folder(folder)
    , _folderPath(std::move(path))
    , journal(journalToWrite)
    , _name(".twinleaf-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces))
{
}

Staging::~Staging()
{
    const bool gone = !_opened.isOpen() || removeFolder();
    if (gone && _note)
        _note->remove();
}

// Not another folder that somebody has put there.
bool Staging::removeFolder() const
{
    const auto mine = statusOf(_opened.number());
    const auto there = statxStatus(_folder, _name, Links::NoFollow);
    if (!there)
        return errno == ENOENT;
    return mine && there->identity == mine->identity
        && ::unlinkat(_folder, _name, AT_REMOVEDIR) == 0;
}

std::error_code Staging::open()
{
    if (_opened.isOpen())
        return {};
    // A note that knows no file system would never be settled.
    const QString mark = folderMark(_folder);
    if (mark.isEmpty())
        return errorOf(-1);
    _note = journal.write({ _folderPath, mark, FileName::fromBytes(_name) });
    _noNote = errorOf(_note ? 0 : -1);
    if (_noNote)
        return _noNote;
    auto failed = errorOf(SystemCalls::mkdirat(_folder, _name, 0700));
    if (!failed) {
        _opened = Descriptor(
            SystemCalls::openat(_folder, _name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        failed = errorOf(_opened.number());
    }
    // In a folder of others it may have been swapped for a different one at once.
    const auto status = failed ? std::nullopt : statusOf(_opened.number());
    bool empty = true;
    if (status)
        DirectoryReader::readOpen(_opened.number(),
                                  [&](const DirectoryItem &) { return empty = false; });
    if (!status || !empty || status->owner != ::geteuid()
        || !_note->appendForGood({ u"home"_s, QString::number(status->identity.inode) })) {
        _opened.close();
        ::unlinkat(_folder, _name, AT_REMOVEDIR);
        _note->remove();
        _note.reset();
        return failed ? failed : std::make_error_code(std::errc::permission_denied);
    }
    return {};
}

QString Staging::heldPath() const
{
    return u"/proc/self/fd/%1"_s.arg(_opened.number());
}

QString Staging::path() const
{
    return PathText::joined(_folderPath, FileName::fromBytes(_name));
}

bool Staging::handOut(const QByteArray &entry, const QByteArray &name, const TakePath &take)
{
    return ::handOut(descriptor(), path(), descriptor(), entry, name, take);
}

QByteArray Staging::entry(const StagedName &staged)
{
    QByteArray text = staged.text();
    if (!text.endsWith(staged.name))
        note({ u"name"_s, FileName::fromBytes(text), FileName::fromBytes(staged.name) });
    return text;
}

std::error_code Staging::note(const QStringList &fields)
{
    if (const auto closed = open())
        return closed;
    _noNote = errorOf(_note->append(fields) ? 0 : -1);
    return _noNote;
}

StagedFile::StagedFile(int folder, Staging &stagingInUse)
    : _folder(folder)
    , staging(stagingInUse)
{
}

StagedFile::~StagedFile()
{
    if (!_name.isEmpty())
        ::unlinkat(staging.descriptor(), _name, 0);
}

std::error_code StagedFile::make()
{
    _file = Descriptor(SystemCalls::openat(_folder, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
    if (_file.isOpen())
        return {};
    const auto failed = errorOf(-1);
    // Some know the flag as that of a folder only.
    if (!Rename::isUnsupported(failed) && failed != std::errc::is_a_directory)
        return failed;
    if (const auto closed = staging.open())
        return closed;
    const QByteArray name = StagedName { StagedName::Making, staging.nextNumber(), {} }.text();
    _file = Descriptor(SystemCalls::openat(
        staging.descriptor(), name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!_file.isOpen())
        return errorOf(-1);
    _name = name;
    return {};
}

std::error_code StagedFile::takeName(int folder, const QByteArray &name)
{
    std::error_code failed;
    if (_name.isEmpty()) {
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(_file.number());
        failed = errorOf(SystemCalls::linkat(AT_FDCWD, self, folder, name, AT_SYMLINK_FOLLOW));
    } else {
        failed = Rename::noReplace(staging.descriptor(), _name, folder, name);
        if (!failed)
            _name.clear();
    }
    return failed;
}

#include "files/Journal.h"

#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "files/SystemCalls.h"

#include <QUuid>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Nothing but a plain file is a note; a FIFO is not waited for.
bool isPlainFile(int descriptor)
{
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

QByteArray readAll(int descriptor)
{
    QByteArray bytes;
    char buffer[4096];
    for (ssize_t n = 0; (n = ::read(descriptor, buffer, sizeof buffer)) > 0;)
        bytes.append(buffer, n);
    return bytes;
}

} // namespace

Journal::Journal(const QString &folder)
    : _folder(FileName::toBytes(folder))
{
}

QString Journal::stateFolder()
{
    if (const char *state = std::getenv("XDG_STATE_HOME"); state && *state == '/')
        return FileName::fromBytes(state) + u"/twinleaf"_s;
    return PathText::joined(PathText::homeFolder(), u".local/state/twinleaf"_s);
}

QString Journal::runsFolder()
{
    return PathText::joined(stateFolder(), u"runs"_s);
}

Journal::Note::Note(QByteArray file, Descriptor opened, QStringList fields)
    : _file(std::move(file))
    , _opened(std::move(opened))
    , _fields(std::move(fields))
{
}

void Journal::Note::remove()
{
    ::unlink(_file.constData());
}

bool Journal::Note::append(const QStringList &fields)
{
    // Each field ends with a NUL, which no file name holds: a note cut short by a crash shows.
    QByteArray bytes;
    for (const QString &field : fields)
        bytes += FileName::toBytes(field) + '\0';
    const ssize_t written = ::write(_opened.number(), bytes.constData(), size_t(bytes.size()));
    if (written >= 0 && written < bytes.size())
        errno = ENOSPC;
    return written == bytes.size();
}

bool Journal::Note::appendForGood(const QStringList &fields)
{
    return append(fields) && SystemCalls::fsync(_opened.number()) == 0;
}

std::unique_ptr<Journal::Note> Journal::write(const QStringList &fields) const
{
    const QByteArray file = _folder + '/' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
    const auto open = [&] {
        return Descriptor(::open(file, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    };
    Descriptor opened = open();
    if (!opened.isOpen() && errno == ENOENT) {
        FileSystem::makePrivateFolders(FileName::fromBytes(_folder));
        opened = open();
    }
    if (!opened.isOpen())
        return nullptr;
    std::unique_ptr<Note> note(new Note(file, std::move(opened), fields));
    if (::flock(note->_opened.number(), LOCK_EX | LOCK_NB) != 0 || !note->appendForGood(fields)) {
        const int reason = errno;
        note->remove();
        errno = reason;
        return nullptr;
    }
    return note;
}

QList<std::shared_ptr<Journal::Note>> Journal::abandoned() const
{
    QList<std::shared_ptr<Note>> notes;
    DirectoryReader reader;
    if (reader.open(FileName::fromBytes(_folder)))
        return notes;
    reader.read([&](const DirectoryItem &item) {
        const QByteArray file = _folder + '/' + item.name.toByteArray();
        Descriptor opened(::open(file, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (!isPlainFile(opened.number()) || ::flock(opened.number(), LOCK_EX | LOCK_NB) != 0)
            return true;
        QStringList fields;
        QList<QByteArray> parts = readAll(opened.number()).split('\0');
        parts.removeLast(); // what stands behind the last NUL
        for (const QByteArray &part : std::as_const(parts))
            fields.append(FileName::fromBytes(part));
        notes.append(std::shared_ptr<Note>(new Note(file, std::move(opened), fields)));
        return true;
    });
    return notes;
}

#include "tests/support/TestFolder.h"

#include "platform/desktop/DesktopPrograms.h"

#include <QFile>
#include <QtEndian>

#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

void require(bool done, const char *what, const QByteArray &path)
{
    if (!done)
        qFatal("%s %s: %s", what, path.constData(), std::strerror(errno));
}

} // namespace

TestFolder::TestFolder(const QByteArray &parent)
{
    QByteArray name = parent.isEmpty() ? qgetenv("TMPDIR") : parent;
    name = (name.isEmpty() ? QByteArray("/tmp") : name) + "/twinleaf-test-XXXXXX";
    require(mkdtemp(name.data()), "mkdtemp", name);
    // Without links in it, so that a test may compare paths.
    _path = FileName::fromBytes(std::filesystem::canonical(name.constData()).c_str());
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(FileName::toBytes(_path).constData(), ignored);
}

QByteArray TestFolder::bytes(const QString &name) const
{
    return FileName::toBytes(path(name));
}

void TestFolder::write(const QString &name, const QByteArray &content) const
{
    const int file = open(bytes(name), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    require(file >= 0, "open", bytes(name));
    require(::write(file, content.constData(), size_t(content.size())) == content.size(), "write",
            bytes(name));
    close(file);
}

void TestFolder::makeFolder(const QString &name) const
{
    std::error_code error;
    std::filesystem::create_directories(bytes(name).constData(), error);
    errno = error.value();
    require(!error, "mkdir", bytes(name));
}

void TestFolder::link(const QString &target, const QString &name) const
{
    require(symlink(FileName::toBytes(target), bytes(name)) == 0, "symlink", bytes(name));
}

void TestFolder::hardLink(const QString &existing, const QString &name) const
{
    require(::link(bytes(existing), bytes(name)) == 0, "link", bytes(name));
}

QByteArray TestFolder::pathInMountTable(const QString &name) const
{
    return FileName::toBytes(path(name)).replace(' ', "\\040");
}

QByteArray TestFolder::read(const QString &name) const
{
    const int descriptor = open(bytes(name), O_RDONLY | O_CLOEXEC);
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle))
        return {};
    return file.readAll();
}

QStringList TestFolder::names(const QString &folder) const
{
    QStringList names;
    std::error_code ignored;
    for (const auto &entry :
         std::filesystem::directory_iterator(bytes(folder).constData(), ignored))
        names.append(FileName::fromBytes(entry.path().filename().c_str()));
    names.sort();
    return names;
}

void TestFolder::shell(const QString &script) const
{
    const ProgramEnd end = DesktopPrograms().run({ u"/bin/bash"_s, u"-e"_s, u"-o"_s, u"pipefail"_s,
                                                   u"-c"_s, u"cd \"$0\"; "_s + script, _path });
    if (!end.succeeded())
        qFatal("%s: status %d: %s", qUtf8Printable(script), end.status,
               qUtf8Printable(end.errorText));
}

void TestFolder::setAttribute(const QString &name, const char *attribute,
                              const QByteArray &value) const
{
    require(lsetxattr(bytes(name), attribute, value.constData(), size_t(value.size()), 0) == 0,
            "setxattr", bytes(name));
}

QByteArray TestFolder::finderInfo(quint16 flags)
{
    QByteArray info(32, '\0');
    qToBigEndian(flags, info.data() + 8);
    return info;
}

void TestFolder::setModified(const QString &name, time_t seconds) const
{
    const timespec times[] = { { seconds, 0 }, { seconds, 0 } };
    require(utimensat(AT_FDCWD, bytes(name), times, 0) == 0, "utimensat", bytes(name));
}

QByteArray TestFolder::attribute(const QString &name, const char *attribute) const
{
    QByteArray value(4096, '\0');
    const auto size = lgetxattr(bytes(name), attribute, value.data(), size_t(value.size()));
    value.resize(qMax<qsizetype>(size, 0));
    return value;
}

#include "pictures/ThumbnailCache.h"

#include "files/CacheFolder.h"
#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "files/SystemCalls.h"
#include "settings/BundleInfo.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 NanosecondsOfSecond = 1'000'000'000;
constexpr qint64 MostBytes = 8 * 1024 * 1024; // of one; four bytes for each of the most pixels

constexpr auto AddressKey = "Thumb::URI"_L1;
constexpr auto ChangedKey = "Thumb::MTime"_L1; // whole seconds
constexpr auto BytesKey = "Thumb::Size"_L1;
constexpr auto WidthKey = "Thumb::Image::Width"_L1;
constexpr auto HeightKey = "Thumb::Image::Height"_L1;

using Size = ThumbnailCache::Size;
constexpr std::array Folders { std::pair(Size::Normal, "normal"_L1),
                               std::pair(Size::Large, "large"_L1),
                               std::pair(Size::ExtraLarge, "x-large"_L1),
                               std::pair(Size::ExtraExtraLarge, "xx-large"_L1) };

// Another version may be able to.
QString failureFolder()
{
    return u"fail/twinleaf-"_s + BundleInfo::version();
}

QString defaultFolder()
{
    return PathText::joined(cacheFolder(), u"thumbnails"_s);
}

QString secondsOf(const FileStatus &status)
{
    const qint64 seconds = status.modified / NanosecondsOfSecond;
    return QString::number(status.modified % NanosecondsOfSecond < 0 ? seconds - 1 : seconds);
}

bool writeAll(int file, const QByteArray &bytes)
{
    for (qsizetype at = 0; at < bytes.size();) {
        const ssize_t written = ::write(file, bytes.constData() + at, size_t(bytes.size() - at));
        if (written <= 0)
            return false;
        at += written;
    }
    return true;
}

// All at once or not at all: others read it meanwhile.
void putInPlace(const QByteArray &folder, const QByteArray &name, const QByteArray &bytes)
{
    QByteArray temporary = folder + "/.twinleaf-XXXXXX";
    Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC)); // for its owner only
    if (!file.isOpen())
        return;
    const bool isWhole = writeAll(file.number(), bytes);
    file.close();
    if (!isWhole
        || SystemCalls::renameat2(AT_FDCWD, temporary, AT_FDCWD, folder + '/' + name, 0) != 0)
        SystemCalls::unlinkat(AT_FDCWD, temporary, 0);
}

} // namespace

ThumbnailCache::ThumbnailCache()
    : ThumbnailCache(defaultFolder())
{
}

ThumbnailCache::ThumbnailCache(QString folder)
    : _folder(std::move(folder))
{
}

QByteArray ThumbnailCache::addressOf(const QString &path)
{
    // The name hangs on each byte of it: these are the signs that the desktops' libraries leave as
    // they are.
    return "file://" + FileName::toBytes(path).toPercentEncoding("!$&'()*+,/:=@");
}

QByteArray ThumbnailCache::nameFor(const QByteArray &address)
{
    return QCryptographicHash::hash(address, QCryptographicHash::Md5).toHex() + ".png";
}

bool ThumbnailCache::holds(const QString &path) const
{
    return path.startsWith(_folder + u'/');
}

std::optional<QImage> ThumbnailCache::read(const QByteArray &file, const Original &original,
                                           int most) const
{
    const Descriptor open(
        SystemCalls::openat(AT_FDCWD, file, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    struct stat status;
    if (::fstat(open.number(), &status) != 0 || !S_ISREG(status.st_mode)
        || status.st_size > MostBytes)
        return std::nullopt;
    QFile device;
    if (!device.open(open.number(), QIODevice::ReadOnly, QFileDevice::DontCloseHandle))
        return std::nullopt;
    QImageReader reader(&device, "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    QImage image;
    if (size.isEmpty() || size.width() > most || size.height() > most || !reader.read(&image))
        return std::nullopt;
    const QString bytes = image.text(BytesKey); // not everybody notes it
    const bool isValid = image.text(AddressKey) == QString::fromLatin1(addressOf(original.path))
        && image.text(ChangedKey) == secondsOf(original.status)
        && (bytes.isEmpty() || bytes == QString::number(original.status.size));
    return isValid ? std::optional(image) : std::nullopt;
}

std::optional<ThumbnailCache::Thumbnail> ThumbnailCache::find(const Original &original,
                                                              Size least) const
{
    const QByteArray name = nameFor(addressOf(original.path));
    const QByteArray folder = FileName::toBytes(_folder) + '/';
    for (const auto &[size, of] : Folders) {
        if (size < least)
            continue;
        if (const auto image =
                read(folder + QByteArray(of.data(), of.size()) + '/' + name, original, side(size)))
            return Thumbnail { *image,
                               { image->text(WidthKey).toInt(), image->text(HeightKey).toInt() } };
    }
    return std::nullopt;
}

bool ThumbnailCache::isKnownToFail(const Original &original) const
{
    return read(FileName::toBytes(PathText::joined(_folder, failureFolder())) + '/'
                    + nameFor(addressOf(original.path)),
                original, side(Size::ExtraExtraLarge))
        .has_value();
}

void ThumbnailCache::write(const QString &folder, const Original &original, QImage image) const
{
    image.setText(AddressKey, QString::fromLatin1(addressOf(original.path)));
    image.setText(ChangedKey, secondsOf(original.status));
    image.setText(BytesKey, QString::number(original.status.size));
    image.setText(u"Software"_s, u"Twinleaf"_s);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QImageWriter writer(&bytes, "png");
    if (!writer.write(image))
        return;
    FileSystem::makePrivateFolders(folder);
    putInPlace(FileName::toBytes(folder), nameFor(addressOf(original.path)), bytes.data());
}

void ThumbnailCache::store(const Original &original, Size size, const Thumbnail &thumbnail) const
{
    QImage image = thumbnail.image;
    image.setText(WidthKey, QString::number(thumbnail.size.width()));
    image.setText(HeightKey, QString::number(thumbnail.size.height()));
    for (const auto &[of, folder] : Folders)
        if (of == size)
            write(PathText::joined(_folder, folder), original, image);
}

void ThumbnailCache::storeFailure(const Original &original) const
{
    QImage nothing(1, 1, QImage::Format_ARGB32);
    nothing.fill(Qt::transparent);
    write(PathText::joined(_folder, failureFolder()), original, nothing);
}

#include "files/VolumeLabel.h"

#include "files/FileName.h"

#include <filesystem>

#include <sys/stat.h>

namespace {

// udev writes a byte that is unsafe in a file name as "\x20".
QString decoded(const QByteArray &name)
{
    QByteArray label;
    for (qsizetype at = 0; at < name.size(); ++at) {
        if (name.mid(at, 2) == "\\x" && at + 3 < name.size()) {
            label += QByteArray::fromHex(name.mid(at + 2, 2));
            at += 3;
        } else {
            label += name[at];
        }
    }
    return FileName::fromBytes(label);
}

QString readLabel()
{
    struct stat root;
    if (::stat("/", &root) != 0)
        return {};
    std::error_code error;
    std::filesystem::directory_iterator labels("/dev/disk/by-label", error);
    for (; !error && labels != std::filesystem::directory_iterator(); labels.increment(error)) {
        struct stat device;
        if (::stat(labels->path().c_str(), &device) != 0 || !S_ISBLK(device.st_mode)
            || device.st_rdev != root.st_dev)
            continue;
        const QString label = decoded(labels->path().filename().c_str());
        // A component of a shown path: a slash in it would be two.
        return label.contains(QLatin1Char('/')) ? QString() : label;
    }
    return {};
}

} // namespace

QString startVolumeLabel()
{
    static const QString label = readLabel();
    return label;
}

#include "operations/CopyProgress.h"

#include "base/Localized.h"
#include "files/DirectoryReader.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "platform/ProcessIo.h"
#include "settings/SizeText.h"

#include <chrono>
#include <cmath>

using namespace std::chrono_literals;

namespace {

// Sums the sizes below a folder and notes the items with attributes. Links are not followed.
struct Walk {
    const QString &root;
    qint64 total = 0;
    QStringList withAttributes {};

    void visit(const QString &relative)
    {
        const QString path = relative.isEmpty() ? root : PathText::joined(root, relative);
        const auto status = fileStatus(path, Links::NoFollow);
        if (!status)
            return;
        if (FileSystem::hasUserAttributes(path))
            withAttributes.append(relative);
        if (status->kind == FileKind::Regular)
            total += status->size;
        if (status->kind != FileKind::Directory)
            return;
        QStringList names;
        {
            DirectoryReader
                reader; // closed before going deeper, so that depth costs no descriptors
            if (reader.open(path, Links::NoFollow))
                return;
            reader.read([&](const DirectoryItem &item) {
                names.append(FileName::fromBytes(item.name));
                return true;
            });
        }
        for (const QString &name : std::as_const(names))
            visit(relative.isEmpty() ? name : PathText::joined(relative, name));
    }
};

} // namespace

CopyProgress::CopyProgress(QString source, std::function<void(const QString &)> show)
    : _source(std::move(source))
    , _show(std::move(show))
    , _thread([this] { run(); })
{
}

CopyProgress::~CopyProgress()
{
    finish();
}

QStringList CopyProgress::finish()
{
    {
        const std::lock_guard lock(_mutex);
        _childEnded = true;
        _ended.notify_all();
    }
    if (_thread.joinable())
        _thread.join();
    return _withAttributes;
}

void CopyProgress::run()
{
    const auto start = std::chrono::steady_clock::now();
    Walk walk { _source };
    walk.visit({});
    _total = walk.total;
    _withAttributes = walk.withAttributes;

    std::unique_lock lock(_mutex);
    while (!_ended.wait_for(lock, 500ms, [this] { return _childEnded; })) {
        const auto done = _process > 0 ? bytesWritten(_process) : std::nullopt;
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        lock.unlock();
        if (done && seconds > 2s)
            _show(line(*done, _total, seconds.count()));
        lock.lock();
    }
}

QString CopyProgress::line(qint64 done, qint64 total, double seconds)
{
    const auto size = [](double bytes) { return SizeText::getCalcFileSizeWithDouble(bytes); };
    const double speed = seconds > 0 ? double(done) / seconds : 0;
    QString text =
        filled(filled(localized("%@ of %@"), size(double(qMin(done, total)))), size(double(total)));
    if (speed < 1)
        return text;
    text += QStringLiteral(", ") + filled(localized("%@ per second"), size(speed));
    const double left = double(qMax<qint64>(total - done, 0)) / speed;
    if (left < 90)
        text += QStringLiteral(", ")
            + filled(localized("about %i second(s) left"), int(std::ceil(left)));
    else
        text += QStringLiteral(", ")
            + filled(localized("about %i minute(s) left"), int(std::lround(left / 60)));
    return text;
}

#include "operations/Transfer.h"

#include "files/FileName.h"
#include "files/Rename.h"
#include "files/StatxStatus.h"
#include "files/SystemCalls.h"
#include "files/TreeRemoval.h"

#include <fcntl.h>
#include <unistd.h>

// What a program makes, rather than what is copied or moved.

using namespace Qt::StringLiterals;
using SystemCalls::errorOf;

std::error_code Transfer::make(const QString &name,
                               const std::function<void(const QString &path)> &work)
{
    discardMade();
    if (_noDestination)
        return _noDestination;
    if (const auto reason = _staging.open())
        return reason;
    // A folder for it alone: the program may write other files beside it.
    const QByteArray bytes = FileName::toBytes(name);
    const QByteArray entry = _staging.entry({ StagedName::Making, _staging.nextNumber(), bytes });
    if (SystemCalls::mkdirat(_staging.descriptor(), entry, 0700) != 0)
        return errorOf(-1);
    _product = { bytes, entry,
                 Descriptor(SystemCalls::openat(_staging.descriptor(), entry,
                                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) };
    if (!_product.folder.isOpen())
        return errorOf(-1);
    work(u"/proc/%1/fd/%2/"_s.arg(::getpid()).arg(_product.folder.number()) + name);
    return {};
}

TransferEnd Transfer::placeMade(Standing standing, const std::optional<FileStatus> &shown)
{
    const auto made = statxStatus(_product.folder.number(), _product.name, Links::NoFollow);
    if (!made)
        return failed(errorOf(-1), _product.name);
    const Item item { {}, _product.name, *made, standing, shown };
    _replacing = {};
    TransferEnd end = place(
        item,
        { *made,
          [&](int folder, const QByteArray &to) {
              return Rename::noReplace(_product.folder.number(), _product.name, folder, to);
          },
          [&](int folder, const QByteArray &entry) {
              return Rename::noReplace(folder, entry, _product.folder.number(), _product.name);
          } });
    if (end.what == TransferEnd::Done)
        noteDone(item, DoneItem::Packed);
    return end;
}

void Transfer::discardMade()
{
    if (!_product.folder.isOpen())
        return;
    if (const auto status = statusOf(_product.folder.number()))
        removeTreeAt(_staging.descriptor(), _product.entry, status->identity, ClosedFolders::Open);
    _product = {};
}

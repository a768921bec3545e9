#include "window/FolderSize.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/FolderWalk.h"
#include "model/CurrentRows.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "settings/SizeText.h"
#include "window/InfoBars.h"

#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned long Patience = 1000; // milliseconds, at the program's end

} // namespace

FolderSize::FolderSize(MessageBus &messages, const MainModel &model, const FileQueries &fileQueries,
                       InfoBars &bars)
    : bus(messages)
    , mainModel(model)
    , queries(fileQueries)
    , infoBars(bars)
{
    bus.subscribe(ShowFolderSize, this, &FolderSize::showFolderSize);
}

FolderSize::~FolderSize()
{
    bus.unsubscribe(this);
    end();
}

bool FolderSize::end()
{
    *_stop = true;
    bool ended = true;
    const auto threads = findChildren<QThread *>();
    for (QThread *thread : threads) {
        if (thread->wait(Patience))
            continue;
        thread->setParent(nullptr); // left behind
        ended = false;
    }
    return ended;
}

void FolderSize::showFolderSize(Side side, const RowsOfPane &asked)
{
    const Listing &listing = mainModel.rows(side);
    const RowSet rows = currentRows(asked.rows, asked.seen, listing);
    if (rows.isEmpty() || !isItemRow(rows.first()))
        return;
    const QString path = listing[rows.first()].path();
    if (!queries.isPackage(path))
        return;
    infoBars.setFileSize(side, localized("Calculating..."));
    if (_counting[side].contains(path))
        return; // its end answers this request too
    _counting[side].insert(path);
    const auto total = std::make_shared<double>(0);
    QThread *thread =
        QThread::create([stop = _stop, path, total] { *total = folderTotal(path, *stop); });
    thread->setParent(this);
    // Kept: of several that run at once the last to end has its say, whatever is selected by then.
    connect(thread, &QThread::finished, this, [this, side, path, total, thread] {
        thread->deleteLater();
        Arrivals::deliver(this, [this, side, path, total] {
            _counting[side].remove(path);
            infoBars.setFileSize(side, SizeText::getCalcFileSize(qint64(*total)));
        });
    });
    thread->start();
}

#include "window/FolderSize.h"

#include "base/Localized.h"
#include "files/FolderWalk.h"
#include "model/CurrentRows.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "settings/SizeText.h"
#include "window/InfoBars.h"

#include <memory>

using namespace Qt::StringLiterals;

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

bool FolderSize::end(QDeadlineTimer deadline)
{
    *_stop = true;
    return _readings.end(deadline);
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
    // Kept: of several that run at once the last to end has its say, whatever is selected by then.
    _readings.start([stop = _stop, path] { return qint64(folderTotal(path, *stop)); },
                    [this, side, path](qint64 total) {
                        _counting[side].remove(path);
                        infoBars.setFileSize(side, SizeText::getCalcFileSize(total));
                    });
}

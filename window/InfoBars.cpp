#include "window/InfoBars.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/MainModel.h"
#include "settings/DateText.h"
#include "settings/SizeText.h"
#include "settings/UserDefaults.h"
#include "window/InfoBarTextField.h"

#include <utility>

using namespace Qt::StringLiterals;

// Kept: the sum is that of the shown texts, so it is approximate. One MB and one byte count as the
// "1.00 MB" that they read.
QString getCalculatedFileSize(const RowSet &rows, const Listing &entries)
{
    double total = 0;
    for (const int row : rows)
        if (entries.holds(row))
            total += SizeText::readAsText(entries[row].knownSize().value_or(0));
    return total == 0 ? u"--"_s : SizeText::getCalcFileSizeWithDouble(total);
}

InfoBars::InfoBars(const PerSide<InfoBarFields> &fields, const MainModel &model,
                   const DateText &dateText, const UserDefaults &settings)
    : _fields(fields)
    , mainModel(model)
    , dates(dateText)
    , defaults(settings)
{
}

void InfoBars::setFileInfoBar(const PaneTable &list)
{
    const InfoBarFields &bar = _fields[list.side()];
    const Listing &rows = mainModel.rows(list.side());
    const RowSet selected = list.selectedRows();
    QString name;
    QString size;
    QString date;
    QString path;
    if (selected.size() > 1) {
        name = filled(localized("%i item(s)"), int(selected.size()));
        size = getCalculatedFileSize(selected, rows);
    } else if (const int row = list.selectedRow(); rows.holds(row)) {
        const Entry entry = rows[row];
        path = entry.path();
        name = FileName::shown(entry.name());
        size = entry.size();
        date = dates.getLocalizedShortDateAndTime(entry.date());
    }
    // The size of a folder that was counted meanwhile stays as long as the folder is selected.
    const QStringList selection { path, name, size, date };
    if (std::exchange(_told[list.side()], selection) == selection)
        return;
    bar.fileName->setText(name);
    bar.fileSize->setText(size);
    bar.fileDate->setText(date);
}

void InfoBars::setInfoBarsColors()
{
    for (const Side side : { Side::Left, Side::Right })
        for (InfoBarTextField *field :
             { _fields[side].fileName, _fields[side].fileSize, _fields[side].fileDate })
            field->readFrameColors(defaults);
}

void InfoBars::setFileSize(Side side, const QString &text)
{
    _fields[side].fileSize->setText(text);
}

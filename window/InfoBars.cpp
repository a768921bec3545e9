#include "window/InfoBars.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "model/MainModel.h"
#include "settings/DateText.h"
#include "settings/SizeText.h"
#include "settings/UserDefaults.h"
#include "window/InfoBarTextField.h"

using namespace Qt::StringLiterals;

// Kept: the texts are rounded, so the sum is approximate. One MB and one byte read "1.00 MB".
QString getCalculatedFileSize(const RowSet &rows, const Listing &entries)
{
    double total = 0;
    for (const int row : rows) {
        if (!entries.holds(row))
            continue;
        const QString text = entries[row].size();
        if (text == u"--"_s)
            continue;
        const float number = text.section(u' ', 0, 0).toFloat();
        if (text.contains(u"GB"_s))
            total += double(number * 1073741824.0F);
        else if (text.contains(u"MB"_s))
            total += double(number * 1048576.0F);
        else if (text.contains(u"KB"_s))
            total += double(number * 1024.0F);
        else
            total += double(number);
    }
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
    if (selected.size() > 1) {
        name = filled(localized("%i item(s)"), int(selected.size()));
        size = getCalculatedFileSize(selected, rows);
    } else if (const int row = list.selectedRow(); rows.holds(row)) {
        const Entry entry = rows[row];
        name = FileName::shown(entry.name());
        size = entry.size();
        date = dates.getLocalizedShortDateAndTime(entry.date());
    }
    bar.fileName->setText(name);
    bar.fileSize->setText(size);
    bar.fileDate->setText(date);
}

void InfoBars::setInfoBarsColors()
{
    for (const Side side : { Side::Left, Side::Right })
        for (InfoBarTextField *field :
             { _fields[side].fileName, _fields[side].fileSize, _fields[side].fileDate })
            field->readColors(defaults);
}

void InfoBars::setFileSize(Side side, const QString &text)
{
    _fields[side].fileSize->setText(text);
}

#pragma once

#include "model/Listing.h"
#include "model/PaneTable.h"
#include "model/Side.h"

#include <QStringList>

class DateText;
class InfoBarTextField;
class MainModel;
class UserDefaults;

// The fields of one pane's info bar.
struct InfoBarFields {
    InfoBarTextField *fileName = nullptr;
    InfoBarTextField *fileSize = nullptr;
    InfoBarTextField *fileDate = nullptr;
};

// The sum of the shown size texts of several rows.
QString getCalculatedFileSize(const RowSet &rows, const Listing &entries);

// The info bars under the panes: name, size and date of the selection.
class InfoBars final {
public:
    InfoBars(const PerSide<InfoBarFields> &fields, const MainModel &mainModel,
             const DateText &dates, const UserDefaults &defaults);

    void setFileInfoBar(const PaneTable &list);
    void setFileSize(Side side, const QString &text);
    void setInfoBarsColors();

private:
    const PerSide<InfoBarFields> _fields;
    const MainModel &mainModel;
    const DateText &dates;
    const UserDefaults &defaults;
    PerSide<QStringList> _told; // the selection, as the fields were last set to it
};

#pragma once

#include "model/ArchiveProgressSheet.h"

#include <QStringList>

// Keeps what packing and unpacking tell the archive sheet.
class ArchiveSheetStub final : public ArchiveProgressSheet {
public:
    void showArchiveSheet(const QString &title) override
    {
        titles.append(title);
        visible = true;
    }
    void setArchiveSheetTitleText(const QString &text) override { titles.append(text); }
    void closeArchiveSheet() override { visible = false; }
    void cancelArchiveSheet() override { visible = false; }

    QStringList titles;
    bool visible = false;
};

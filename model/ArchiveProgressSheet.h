#pragma once

#include <QString>

// The archive sheet as packing and unpacking drive it. Main thread.
class ArchiveProgressSheet {
public:
    virtual ~ArchiveProgressSheet() = default;

    virtual void showArchiveSheet(const QString &title) = 0; // does not block
    virtual void setArchiveSheetTitleText(const QString &text) = 0;
    virtual void closeArchiveSheet() = 0;
    virtual void cancelArchiveSheet() = 0; // as its Cancel button
};

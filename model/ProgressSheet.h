#pragma once

#include <QString>

// The working sheet as the copy and move run drives it. Main thread.
class ProgressSheet {
public:
    virtual ~ProgressSheet() = default;

    virtual void showWorkingSheet() = 0; // progress value 0; does not block
    virtual bool isWorkingSheetVisible() const = 0;
    virtual void closeWorkingSheet() = 0;
    virtual void cancelWorkingSheet() = 0; // as its Cancel button
    virtual void setWorkingSheetInfoText(const QString &text) = 0;
    // The second line: bytes done, speed and time left of a long item; "" hides it.
    virtual void setWorkingSheetDetailText(const QString &text) = 0;
    virtual void setWorkingSheetMaxProgressValue(double value) = 0;
    virtual void setWorkingSheetProgressValue(double value) = 0;
};

#pragma once

#include "model/ProgressSheet.h"

#include <QStringList>

#include <functional>

// Keeps what the run tells the working sheet. Main thread, as the real one.
class ProgressSheetStub : public ProgressSheet {
public:
    void showWorkingSheet() override
    {
        visible = true;
        ++shown;
    }
    bool isWorkingSheetVisible() const override { return visible; }
    void closeWorkingSheet() override
    {
        visible = false;
        ++closed;
    }
    void cancelWorkingSheet() override { ++cancelled; }
    void setWorkingSheetInfoText(const QString &text) override
    {
        texts.append(text);
        if (onText)
            onText(text);
    }
    void setWorkingSheetDetailText(const QString &) override { }
    void setWorkingSheetMaxProgressValue(double value) override { maximum = value; }
    void setWorkingSheetProgressValue(double value) override { values.append(value); }

    bool visible = false;
    int shown = 0;
    int closed = 0;
    int cancelled = 0;
    QStringList texts;
    double maximum = 0;
    QList<double> values;
    std::function<void(const QString &)> onText;
};

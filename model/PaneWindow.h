#pragma once

#include "model/PaneTable.h"

// What the pane model and the operations ask of the main window. Main thread.
class PaneWindow {
public:
    virtual ~PaneWindow() = default;

    virtual PaneTable &getTableView(Side side) = 0;
    // The active pane, or none when the focus is elsewhere in the window.
    virtual PaneTable *getFirstResponderTableView() = 0;
    virtual PaneTable *getOtherResponderTableView() = 0;

    virtual QString getCurrentPathFromSegmentedControl(Side side) const = 0;
    virtual int getSelectedSegmentFromSegmentedControl(Side side) const = 0;
    virtual QString completeNavigatorPath(Side side) const = 0;
    virtual bool isItemInNavigatorPath(const QString &item, Side side) const = 0;

    virtual void setMenuItemShowHiddenItems(const QString &title) = 0;
    // Blocks until answered; "" when cancelled.
    virtual QString getStringFromInputSheet(const QString &prompt,
                                            const QString &inputText = {}) = 0;
    virtual void setProgressIndicator(bool spinning) = 0; // counted: each true needs its false
    virtual void updateMainWindow() = 0;
    virtual void showNotice(const QString &line) = 0; // for a while; nobody has to answer
};

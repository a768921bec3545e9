#pragma once

#include "widgets/Sheet.h"
#include "window/ToolbarItemModels.h"

class QComboBox;
class QListView;

// Arranges the toolbar: what could stand in it on the left, what does on the right. Items are
// dragged from list to list and along the right one, or moved by buttons and keys; the window shows
// each step at once. Main thread.
class ToolbarCustomization final : public Sheet {
    Q_OBJECT

public:
    ToolbarCustomization(Toolbar &toolbar, QWidget *mainWindow);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QListView *addList(const char *name, ToolbarItemModel &model, QLayout &columns);
    QLayout *moves(); // the buttons between the lists
    QLayout *display();
    void add();
    void remove();
    void move(int rows);
    void restoreDefaults();
    void enableButtons();
    bool takesKey(QObject *list, int key, Qt::KeyboardModifiers modifiers);

    Toolbar &toolbar;
    ToolbarBarModel _bar;
    ToolbarPaletteModel _palette;
    QListView *_paletteList = nullptr;
    QListView *_barList = nullptr;
    QPushButton *_add = nullptr;
    QPushButton *_remove = nullptr;
    QPushButton *_moveUp = nullptr;
    QPushButton *_moveDown = nullptr;
    int _rowBefore = -1; // the list is filled anew
    QComboBox *_display = nullptr;
};

#pragma once

#include <QAbstractListModel>
#include <QStringList>

class Toolbar;

// Items of the toolbar in a list, to be dragged into another. Main thread.
class ToolbarItemModel : public QAbstractListModel {
    Q_OBJECT

public:
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;

    QString identifier(int row) const { return _rows.value(row); }

protected:
    explicit ToolbarItemModel(Toolbar &toolbar);

    // What is dragged: an item of the bar by its row there, else one that is to come.
    struct Dragged {
        int row = -1;
        QString identifier {};
    };
    static std::optional<Dragged> dragged(const QMimeData *data);
    void setRows(const QStringList &identifiers);
    virtual bool isOfBar() const = 0;

    Toolbar &toolbar;

private:
    QStringList _rows;
};

// What stands in the bar. A person sees of it what is offered now; the rest keeps its place.
class ToolbarBarModel final : public ToolbarItemModel {
    Q_OBJECT

public:
    explicit ToolbarBarModel(Toolbar &toolbar);

    // Each stores what it changed. Row numbers count what can be seen; the one after the last is
    // the end. They answer where the item stands then, or the nearest one; -1: nothing was done.
    int add(const QString &identifier, int before);
    int remove(int row);
    int move(int row, int before);
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    void dropped(int row);

protected:
    bool isOfBar() const override { return true; }

private:
    void reload();
    // With the items as they are stored now: another program may have arranged them meanwhile.
    bool isStillAt(int row);

    QStringList _all;
    QList<qsizetype> _places; // of the rows, in all
};

// What could be added: each item once, but separators and spaces always.
class ToolbarPaletteModel final : public ToolbarItemModel {
    Q_OBJECT

public:
    ToolbarPaletteModel(Toolbar &toolbar, ToolbarBarModel &bar);

    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

protected:
    bool isOfBar() const override { return false; }

private:
    void reload();

    ToolbarBarModel &_bar;
};

#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include <functional>

class DiskQuestions;
struct FileStatus;

// The rows of a list of paths that a person keeps: an icon and some texts each. What stands at a
// path is looked at when its row is painted for the first time, beside the window; a path at which
// nothing stands any more is marked. Main thread.
class RecordTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Record {
        QString path;
        QStringList texts; // for each column after the icon
    };
    // The icon of a path at which something stands. Called once for each path.
    using IconOf = std::function<QIcon(const QString &path, const FileStatus &status)>;

    static constexpr int IconColumn = 0;

    RecordTableModel(const QStringList &titles, DiskQuestions &questions, IconOf iconOf);

    void setRecords(const QList<Record> &records);
    const QList<Record> &records() const { return _records; }
    void forgetLooks() { _looks.clear(); } // all is looked at anew

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

private:
    enum class State { Asked, There, Gone };
    struct Look {
        State state = State::Asked;
        QIcon icon {};
    };

    const Look &look(const QString &path) const;
    void take(const QString &path, const std::optional<FileStatus> &status);

    const QStringList _titles;
    DiskQuestions &questions;
    const IconOf _iconOf;
    QList<Record> _records;
    mutable QHash<QString, Look> _looks; // by path, as far as rows were painted
};

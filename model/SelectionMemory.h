#pragma once

#include <QHash>
#include <QString>
#include <QVariantMap>

// The row last selected in each folder a pane has shown.
class SelectionMemory final {
public:
    void setRow(int row, const QString &folder) { _rows.insert(folder, row); }
    int row(const QString &folder) const { return _rows.value(folder, 0); }
    void removeRow(const QString &folder) { _rows.remove(folder); }

    // As it stands in the settings: folder path to row number. Values that are no numbers are left
    // out.
    QVariantMap toDictionary() const;
    static SelectionMemory fromDictionary(const QVariantMap &dictionary);

private:
    QHash<QString, int> _rows;
};

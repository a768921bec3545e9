#pragma once

#include <QString>

#include <set>
#include <system_error>

// Moves what lies in one folder into another, without replacing anything: a file that is in the way
// goes to the Trash first, a folder in the way takes the other's items in.
class Merge final {
public:
    // Stops between two items when the person cancels. False when something had to stay; what, and
    // why, is told on standard error.
    bool moveAll(const QString &from, const QString &to);

    // Whether what stands at this relative path came from the other folder, by itself or in one of
    // its folders.
    bool hasMoved(const QString &path) const;

private:
    bool moveContents(const QString &from, const QString &to, const QString &relative);
    bool moveItem(const QString &from, const QString &to, const QString &relative);
    std::error_code moveAlone(const QString &from, const QString &to, const QString &relative);

    std::set<QString> _moved;
};

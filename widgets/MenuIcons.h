#pragma once

#include <QIcon>
#include <QObject>

#include <functional>

class DiskQuestions;
class QMenu;
struct FileStatus;

// The icons of a menu's items that stand for a path, which is their data: made when the menu is
// opened, as the disk answers. Until then, and for a path at which nothing is, an item keeps the
// icon it has. Main thread.
class MenuIcons final : public QObject {
    Q_OBJECT

public:
    using IconOf = std::function<QIcon(const QString &path, const FileStatus &status)>;

    MenuIcons(QMenu &menu, DiskQuestions &questions, IconOf iconOf);

private:
    void ask();

    QMenu &menu;
    DiskQuestions &questions;
    const IconOf _iconOf;
};

#pragma once

#include <QStringList>

// Paths as text: no disk access. Paths are absolute, "/" between components. Any thread.
namespace PathText {

QString joined(const QString &folder, const QString &name); // "/" + "a" is "/a"
QString lastComponent(const QString &path); // of "/" it is "/"
QString parent(const QString &path); // of "/" it is "/"; of "a" it is ""
QString extension(const QString &path); // without the dot; "" for ".profile", "a." and "a"
QString withoutExtension(const QString &path);
QString withExtension(const QString &path, const QString &extension);
// "/a/b" gives "/", "a", "b"; doubled and trailing slashes count once.
QStringList components(const QString &path);
QString fromComponents(const QStringList &components);
// Without doubled and trailing slashes and ".", and with ".." taking the component before it away.
// "" for what does not start with "/".
QString normalized(const QString &path);
// The path a person types, normalized: "~" at the start is the home folder. "" for what does not
// start at "/" or "~".
QString fromTyped(const QString &text);
// A name that can be given to an item: not "", ".", "..", no "/" and no NUL.
bool isItemName(const QString &name);

QString homeFolder(); // $HOME, else the user database's

} // namespace PathText

#include "files/HiddenRule.h"

#include "files/PathText.h"
#include "files/SmallFile.h"

namespace {

constexpr qint64 HiddenFileLimit = 1024 * 1024; // bytes

} // namespace

HiddenRule::HiddenRule(QString folder)
    : _folder(std::move(folder))
{
}

bool HiddenRule::hidesName(QByteArrayView name)
{
    if (name.startsWith('.') || name == "Temporary Items")
        return true;
    if (!_listed)
        _listed = listedIn(
            startOfFile(PathText::joined(_folder, QStringLiteral(".hidden")), HiddenFileLimit));
    return !_listed->isEmpty() && _listed->contains(name.toByteArray());
}

QSet<QByteArray> HiddenRule::listedIn(const QByteArray &hiddenFile)
{
    QSet<QByteArray> names;
    const auto lines = hiddenFile.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            names.insert(line);
    }
    return names;
}

#include "files/HiddenRule.h"

#include "files/PathText.h"
#include "files/SmallFile.h"

namespace {

constexpr qint64 HiddenFileLimit = 1024 * 1024; // bytes

QSet<QByteArray> linesOf(const QByteArray &text)
{
    QSet<QByteArray> lines;
    const auto all = text.split('\n');
    for (const QByteArray &line : all) {
        if (!line.isEmpty())
            lines.insert(line);
    }
    return lines;
}

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
        _listed = linesOf(
            startOfFile(PathText::joined(_folder, QStringLiteral(".hidden")), HiddenFileLimit));
    return !_listed->isEmpty() && _listed->contains(name.toByteArray());
}

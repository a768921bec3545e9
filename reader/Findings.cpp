#include "reader/Findings.h"

#include "platform/ReaderWords.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

// One line, without what no line holds.
QString cleaned(const QString &text)
{
    QString cleaned = text.left(ReaderWords::AttributeLimit);
    cleaned.replace(QChar(0), u' ');
    return cleaned.simplified();
}

} // namespace

bool Findings::has(const QString &name) const
{
    return std::ranges::find(_contents.attributes, name, &MetadataAttribute::name)
        != _contents.attributes.cend();
}

void Findings::add(const QString &name, const QString &text)
{
    const QString value = cleaned(text);
    if (!value.isEmpty() && !has(name))
        _contents.attributes.append({ name, value });
}

void Findings::add(const QString &name, qint64 number)
{
    if (!has(name))
        _contents.attributes.append({ name, number });
}

void Findings::add(const QString &name, double number)
{
    if (std::isfinite(number) && !has(name))
        _contents.attributes.append({ name, number });
}

void Findings::add(const QString &name, const QDateTime &date)
{
    if (date.isValid() && !has(name))
        _contents.attributes.append({ name, date });
}

void Findings::addToList(const QString &name, const QString &text)
{
    const QString value = cleaned(text);
    if (value.isEmpty())
        return;
    const auto found = std::ranges::find(_contents.attributes, name, &MetadataAttribute::name);
    if (found == _contents.attributes.end()) {
        _contents.attributes.append({ name, QStringList { value } });
        return;
    }
    QStringList list = found->value.toStringList();
    if (list.size() >= ReaderWords::ListLimit || list.contains(value))
        return;
    list.append(value);
    found->value = list;
}

void Findings::addText(QStringView text)
{
    const qsizetype room = ReaderWords::TextLimit - _contents.text.size();
    _contents.textWasCut = _contents.textWasCut || text.size() > room;
    _contents.text.append(text.left(room));
}

void Findings::addBreak()
{
    if (!_contents.text.isEmpty() && !_contents.text.endsWith(u'\n'))
        addText(u"\n");
}

void Findings::setText(QString text)
{
    _contents.textWasCut = _contents.textWasCut || text.size() > ReaderWords::TextLimit;
    text.truncate(ReaderWords::TextLimit);
    _contents.text = std::move(text);
}

bool Findings::isOver()
{
    const bool isOver = _contents.text.size() >= ReaderWords::TextLimit || isLate();
    _contents.textWasCut = _contents.textWasCut || isOver;
    return isOver;
}

// The processor's clock costs a system call, this one none, and it moves a few hundred times a
// second.
bool Findings::isLate()
{
    constexpr std::clock_t Seconds = 10;
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    if (now.tv_nsec == _seen.tv_nsec && now.tv_sec == _seen.tv_sec)
        return _isLate;
    _seen = now;
    _isLate = std::clock() - _begun > Seconds * CLOCKS_PER_SEC;
    return _isLate;
}

#include "sheets/terminal/CommandField.h"

#include <QKeyEvent>

namespace {

constexpr qsizetype MostLines = 500;

} // namespace

CommandField::CommandField(QWidget *parent)
    : QLineEdit(parent)
{
}

QString CommandField::take()
{
    QString line = text();
    clear();
    if (!line.isEmpty() && (_lines.isEmpty() || _lines.last() != line))
        _lines.append(line);
    if (_lines.size() > MostLines)
        _lines.removeFirst();
    _place = _lines.size();
    _typed.clear();
    return line;
}

void CommandField::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy) && !hasSelectedText()) {
        Q_EMIT stopAsked();
        return;
    }
    switch (event->modifiers() & ~Qt::KeypadModifier ? 0 : event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: // and no button of the sheet
        Q_EMIT entered();
        break;
    case Qt::Key_Up:
        walk(-1);
        break;
    case Qt::Key_Down:
        walk(1);
        break;
    case Qt::Key_PageUp:
        Q_EMIT pageAsked(-1);
        break;
    case Qt::Key_PageDown:
        Q_EMIT pageAsked(1);
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void CommandField::walk(qsizetype step)
{
    const qsizetype place = _place + step;
    if (place < 0 || place > _lines.size())
        return;
    if (_place == _lines.size())
        _typed = text();
    _place = place;
    setText(_place == _lines.size() ? _typed : _lines[_place]);
}

#include "sheets/terminal/OutputView.h"

#include "base/Localized.h"
#include "sheets/terminal/OutputText.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

namespace {

constexpr qsizetype Piece = 32 << 10; // characters; a few milliseconds
// Of one whole output, and a little more, so that not each piece makes the oldest leave.
constexpr int MostCharacters = OutputText::MostCharacters + (1 << 18);
constexpr int MostLines = OutputText::MostLines + 20'000;
constexpr double FontSize = 10; // points
constexpr int TabLetters = 8;
constexpr int Columns = 90;
constexpr int Rows = 24;

} // namespace

OutputView::OutputView(QWidget *parent)
    : QPlainTextEdit(parent)
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(FontSize);
    setFont(fixed);
    setTabStopDistance(TabLetters * fontMetrics().horizontalAdvance(u' '));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setWordWrapMode(QTextOption::WrapAnywhere);
    setTabChangesFocus(true);
    _feed.setInterval(0);
    _feed.callOnTimeout(this, &OutputView::insertPiece);
}

QSize OutputView::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return { Columns * metrics.averageCharWidth() + 2 * frameWidth(),
             Rows * metrics.lineSpacing() + 2 * frameWidth() };
}

void OutputView::insertText(const QString &text)
{
    _pending = _pending.mid(_inserted) + text;
    _inserted = 0;
    if (!_feed.isActive())
        insertPiece();
}

void OutputView::deleteAll()
{
    _feed.stop();
    _pending.clear();
    _inserted = 0;
    clear();
}

void OutputView::insertPiece()
{
    QScrollBar *bar = verticalScrollBar();
    const bool wasAtEnd = bar->value() == bar->maximum();
    qsizetype length = std::min(Piece, _pending.size() - _inserted);
    if (length == Piece && _pending[_inserted + length - 1].isHighSurrogate())
        --length;
    // Where it would be inserted in a text that can be typed in; nobody can here, and a selection
    // made meanwhile stays.
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(_pending.mid(_inserted, length));
    _inserted += length;
    forgetOldest();
    if (wasAtEnd)
        bar->setValue(bar->maximum());
    if (_inserted < _pending.size())
        return _feed.start();
    _feed.stop();
    _pending.clear();
    _inserted = 0;
}

void OutputView::forgetOldest()
{
    if (document()->characterCount() <= MostCharacters && blockCount() <= MostLines)
        return;
    const int tooMany = document()->characterCount() - OutputText::MostCharacters;
    const int tooManyLines = std::max(blockCount() - OutputText::MostLines, 0);
    QTextCursor oldest(document());
    oldest.setPosition(std::max(tooMany, document()->findBlockByNumber(tooManyLines).position()),
                       QTextCursor::KeepAnchor);
    oldest.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
    oldest.insertText(localized("[Older output was removed.]") + u'\n');
}

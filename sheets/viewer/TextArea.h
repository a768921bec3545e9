#pragma once

#include "sheets/viewer/LaidLines.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <optional>

// Shows a file of any size by the one stretch of it that is seen, and asks for another where that
// ends. Until it comes, what was there stays. Places are those of bytes. Main thread.
class TextArea final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit TextArea(QWidget *parent = nullptr);

    void setForm(const TextForm &form); // what is seen stays where it is
    const TextForm &form() const { return _lines.form(); }
    void setWraps(bool wraps);
    void takeStretch(const Stretch &stretch); // each that was asked for
    void showMessage(const QString &text); // instead of a file

    void scrollTo(qint64 offset, int rows = 0); // that row, and so many on, becomes the first
    void scrollBy(int rows);
    void scrollToEnd(); // of the file as it is by then
    qint64 topOffset(); // of the first row that is seen
    qint64 fileSize() const { return _fileSize; } // as it was last seen
    double shareShown(); // of the file, up to the last row that is seen
    QString shownText(); // the rows that are seen

    struct Selection {
        qint64 anchor = 0; // where it began
        qint64 position = 0; // where it is moved
        qint64 start() const { return std::min(anchor, position); }
        qint64 end() const { return std::max(anchor, position); }
        bool isEmpty() const { return anchor == position; }
    };
    const Selection &selection() const { return _selection; }
    void select(qint64 anchor, qint64 position); // and has it seen
    void selectAll();

Q_SIGNALS:
    void stretchWanted(qint64 offset, int before, int behind);
    void viewChanged(); // what is seen, or selected
    void copyAsked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    static constexpr int Margin = 4; // pixels, left and right of the text
    struct Wanted {
        qint64 offset;
        int rows;
    };

    void layOut();
    void settle();
    void want(qint64 offset);
    void place(LaidLines::Place top);
    void showBars();
    void barMoved(int action);
    int visibleRows() const; // whole ones
    bool isAtEnd(); // the last row is seen
    LaidLines::Place placeAt(int y);
    qint64 offsetAt(const QPoint &position);
    bool extendByKey(const QKeyEvent &event);
    bool scrollByKey(const QKeyEvent &event);
    void extendTo(const QPoint &position);
    void makeSeen(qint64 offset);

    LaidLines _lines;
    qint64 _fileSize = 0;
    QString _message;
    std::optional<LaidLines::Place> _top; // none before the first stretch
    std::optional<Wanted> _wanted; // where to, when the stretch for it is there
    std::optional<qint64> _asked; // the stretch that is on its way
    std::optional<qint64> _toAsk; // and the one after it
    Selection _selection;
    bool _wraps = true;
    int _rowHeight = 1;
    int _shift = 0; // of a byte's place, to the scroll bar's
    int _wheel = 0; // what is left of its steps
    bool _selects = false; // the mouse does
    QPoint _mouse;
    QBasicTimer _outside; // while it selects there
};

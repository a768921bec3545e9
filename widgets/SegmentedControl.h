#pragma once

#include "widgets/SegmentWidths.h"

#include <QWidget>

#include <optional>

// A row of segments of which exactly one is selected. When it gets narrow those behind the first
// are folded into one that opens a menu, so that the selected one and its nearest stay readable.
class SegmentedControl final : public QWidget {
    Q_OBJECT

public:
    enum class ControlSize { Small, Mini };

    // Of a path what lies behind the selected segment stands back; of a choice nothing does.
    enum class Meaning { Path, Choice };

    explicit SegmentedControl(QWidget *parent = nullptr, Meaning meaning = Meaning::Path);

    void setControlSize(ControlSize size);

    int segmentCount() const { return int(_segments.size()); }
    void setSegmentCount(int count);
    QString label(int segment) const; // "" outside the segments
    void setLabel(int segment, const QString &label);
    bool hasLabel(const QString &label) const;
    QString segmentToolTip(int segment) const;
    void setSegmentToolTip(int segment, const QString &text);
    int selectedSegment() const { return _selected; } // -1 for none
    void setSelectedSegment(int segment);
    int keyboardSegment() const { return _keyboard; } // the one that Return would choose
    void choose(int segment); // as a click on it
    QRect segmentRect(int segment) const; // empty for one that is folded
    QRect foldRect() const; // empty while nothing is folded
    bool isFolded(int segment) const { return widths().folds(segment); }
    void openFold(); // the menu of what is folded

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void clicked(); // the user chose the segment that is now selected
    void escaped(); // the keyboard is done with the control
    void contextMenuAsked(const QPoint &globalPosition);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    struct Segment {
        QString label;
        QString toolTip;
    };
    // Measured once for what is shown, not for each segment.
    const SegmentWidths &widths() const;
    QRect visualArea(int x, int width) const;
    QString pathTo(int segment) const; // the labels up to it, as one text
    int neighbour(int step) const; // of the keyboard's segment; what is folded counts as one
    int segmentAt(const QPoint &position) const; // -1 for none
    void describe();
    void changed(); // what is shown
    void paintEdge(QPainter &painter, const QRect &area, const QColor &color) const;
    void paintSegment(QPainter &painter, int segment, const QRect &area) const;
    void paintFold(QPainter &painter, const QRect &area) const;
    void paintLabel(QPainter &painter, const QRect &area, const QString &text) const;

    QList<Segment> _segments;
    mutable std::optional<SegmentWidths> _widths; // nothing while they are to be measured anew
    ControlSize _controlSize = ControlSize::Small;
    const Meaning _meaning;
    int _selected = -1;
    int _hovered = -1;
    int _pressed = -1;
    int _keyboard = -1;
};

#pragma once

#include <QList>
#include <QWidget>

// A row of segments of which exactly one is selected. When it gets narrow the segments before the
// selected one shrink first, so that this one stays readable.
class SegmentedControl final : public QWidget {
    Q_OBJECT

public:
    enum class ControlSize { Small, Mini };

    explicit SegmentedControl(QWidget *parent = nullptr);

    void setControlSize(ControlSize size);
    ControlSize controlSize() const { return _controlSize; }

    int segmentCount() const { return int(_segments.size()); }
    void setSegmentCount(int count);
    QString label(int segment) const; // "" outside the segments
    void setLabel(int segment, const QString &label);
    bool hasLabel(const QString &label) const;
    QString segmentToolTip(int segment) const;
    void setSegmentToolTip(int segment, const QString &text);
    int selectedSegment() const { return _selected; } // -1 for none
    void setSelectedSegment(int segment);
    QRect segmentRect(int segment) const;

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
    void focusInEvent(QFocusEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    struct Segment {
        QString label;
        QString toolTip;
    };
    QList<int> widths() const;
    int segmentAt(const QPoint &position) const; // -1 for none
    void choose(int segment);
    void describe();
    void paintSegment(QPainter &painter, int segment, const QRect &area) const;

    QList<Segment> _segments;
    ControlSize _controlSize = ControlSize::Small;
    int _selected = -1;
    int _hovered = -1;
    int _pressed = -1;
    int _keyboard = -1; // the segment that Return would choose
};

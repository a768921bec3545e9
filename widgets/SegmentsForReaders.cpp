#include "widgets/SegmentsForReaders.h"

#include "files/FileName.h"
#include "widgets/SegmentedControl.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace {

class SegmentInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    SegmentInterface(SegmentedControl *control, int segment)
        : _control(control)
        , _segment(segment)
    {
    }

    bool isValid() const override { return _control && _segment < _control->segmentCount(); }
    QObject *object() const override { return nullptr; } // it is painted only
    QWindow *window() const override
    {
        return _control ? _control->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(_control);
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name && isValid() ? FileName::shown(_control->label(_segment))
                                                      : QString();
    }
    void setText(QAccessible::Text, const QString &) override { }
    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect area = _control->segmentRect(_segment);
        return { _control->mapToGlobal(area.topLeft()), area.size() };
    }
    QAccessible::Role role() const override { return QAccessible::PageTab; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.selectable = true;
        state.selected = _segment == _control->selectedSegment();
        state.focusable = true;
        state.focused = _control->hasFocus() && _segment == _control->keyboardSegment();
        state.offscreen = _control->segmentRect(_segment).isEmpty();
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
            ? static_cast<QAccessibleActionInterface *>(this)
            : nullptr;
    }
    QStringList actionNames() const override { return { pressAction() }; }
    void doAction(const QString &name) override
    {
        if (name == pressAction() && isValid())
            _control->choose(_segment);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    const QPointer<SegmentedControl> _control;
    const int _segment;
};

class ControlInterface final : public QAccessibleWidget {
public:
    explicit ControlInterface(SegmentedControl *control)
        : QAccessibleWidget(control, QAccessible::PageTabList)
    {
    }
    ~ControlInterface() override
    {
        for (const QAccessible::Id segment : std::as_const(_segments))
            QAccessible::deleteAccessibleInterface(segment);
    }
    ControlInterface(const ControlInterface &) = delete;
    ControlInterface &operator=(const ControlInterface &) = delete;

    int childCount() const override { return control()->segmentCount(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        // Made once and kept: readers hold on to them.
        while (_segments.size() <= index)
            _segments.append(QAccessible::registerAccessibleInterface(
                new SegmentInterface(control(), int(_segments.size()))));
        return QAccessible::accessibleInterface(_segments[index]);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int index = 0; index < int(_segments.size()); ++index)
            if (QAccessible::accessibleInterface(_segments[index]) == child)
                return index;
        return -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int index = 0; index < childCount(); ++index)
            if (child(index)->rect().contains(x, y))
                return child(index);
        return nullptr;
    }
    QAccessibleInterface *focusChild() const override
    {
        return control()->hasFocus() ? child(control()->keyboardSegment()) : nullptr;
    }

private:
    SegmentedControl *control() const { return static_cast<SegmentedControl *>(widget()); }

    mutable QList<QAccessible::Id> _segments;
};

QAccessibleInterface *interfaceOf(const QString &, QObject *object)
{
    auto *control = qobject_cast<SegmentedControl *>(object);
    return control ? new ControlInterface(control) : nullptr;
}

} // namespace

void exposeSegments()
{
    [[maybe_unused]] static const bool once = [] {
        QAccessible::installFactory(&interfaceOf);
        return true;
    }();
}

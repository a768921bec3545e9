#include "widgets/SegmentsForReaders.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "files/FileName.h"
#include "widgets/SegmentedControl.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace {

constexpr int Fold = -1; // in place of a segment's number: the menu of the folded ones

class SegmentInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    SegmentInterface(SegmentedControl *control, int segment)
        : _control(control)
        , _segment(segment)
    {
    }

    bool isValid() const override { return _control && _segment < _control->segmentCount(); }
    bool isFold() const { return _segment == Fold; }
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
        if (kind != QAccessible::Name || !isValid())
            return {};
        return isFold() ? localized("More folders") : FileName::shown(_control->label(_segment));
    }
    void setText(QAccessible::Text, const QString &) override { }
    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect area = place();
        return { _control->mapToGlobal(area.topLeft()), area.size() };
    }
    QAccessible::Role role() const override
    {
        return isFold() ? QAccessible::ButtonMenu : QAccessible::PageTab;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        const int keyboard = _control->keyboardSegment();
        state.selectable = !isFold();
        state.selected = !isFold() && _segment == _control->selectedSegment();
        state.focusable = true;
        state.focused =
            _control->hasFocus() && _segment == (_control->isFolded(keyboard) ? Fold : keyboard);
        state.offscreen = place().isEmpty();
        state.invisible = isFold() && place().isEmpty();
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
            Arrivals::afterWait(_control,
                                [control = _control, segment = _segment, fold = isFold()] {
                                    if (control && fold)
                                        control->openFold();
                                    else if (control && segment < control->segmentCount())
                                        control->choose(segment);
                                });
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QRect place() const
    {
        return isFold() ? _control->foldRect() : _control->segmentRect(_segment);
    }

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
        if (_fold != 0)
            QAccessible::deleteAccessibleInterface(_fold);
    }
    ControlInterface(const ControlInterface &) = delete;
    ControlInterface &operator=(const ControlInterface &) = delete;

    int childCount() const override { return control()->segmentCount() + 1; } // with the fold
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        // Made once and kept: readers hold on to them.
        if (index == control()->segmentCount()) {
            if (_fold == 0)
                _fold =
                    QAccessible::registerAccessibleInterface(new SegmentInterface(control(), Fold));
            return QAccessible::accessibleInterface(_fold);
        }
        while (_segments.size() <= index)
            _segments.append(QAccessible::registerAccessibleInterface(
                new SegmentInterface(control(), int(_segments.size()))));
        return QAccessible::accessibleInterface(_segments[index]);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        if (_fold != 0 && QAccessible::accessibleInterface(_fold) == child)
            return control()->segmentCount();
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
        const int keyboard = control()->keyboardSegment();
        return control()->hasFocus()
            ? child(control()->isFolded(keyboard) ? control()->segmentCount() : keyboard)
            : nullptr;
    }

private:
    SegmentedControl *control() const { return static_cast<SegmentedControl *>(widget()); }

    mutable QList<QAccessible::Id> _segments;
    mutable QAccessible::Id _fold = 0; // 0: not made yet
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

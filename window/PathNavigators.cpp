#include "window/PathNavigators.h"

#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "settings/PathNavigatorStyle.h"

#include <QFontDatabase>

#include <algorithm>

using namespace Qt::StringLiterals;

PathNavigators::PathNavigators(SegmentedControl &left, SegmentedControl &right,
                               MessageBus &messages, const MainModel &model,
                               const FileQueries &fileQueries, const UserDefaults &settings)
    : leftSegmentedControl(left)
    , rightSegmentedControl(right)
    , bus(messages)
    , mainModel(model)
    , queries(fileQueries)
    , defaults(settings)
{
    bus.subscribe(DirectoryChanged, this, &PathNavigators::setPathNavigator);
    for (const Side side : { Side::Left, Side::Right })
        connect(&control(side), &SegmentedControl::clicked, this,
                [this, side] { pathNavigatorClicked(side); });
}

PathNavigators::~PathNavigators()
{
    bus.unsubscribe(this);
}

void PathNavigators::setupPathNavigators()
{
    using ControlSize = SegmentedControl::ControlSize;
    const auto style = PathNavigatorStyle::fromDefaults(defaults);
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSize(style.fontSize);
    font.setBold(style.bold);
    for (const Side side : { Side::Left, Side::Right }) {
        control(side).setFont(font);
        control(side).setControlSize(style.mini ? ControlSize::Mini : ControlSize::Small);
    }
}

void PathNavigators::setPathNavigator(Side side, const FolderChange &change)
{
    // The pane model has listed it: it is the first that hears of a change.
    const QString path = mainModel.folder(side);
    if (path.isEmpty() || (!change.path.isEmpty() && change.path != path))
        return; // nobody answered: the pane stayed where it was
    const QStringList components = PathText::components(queries.getLocalizedPath(path));
    const int count = int(components.size());
    SegmentedControl &navigator = control(side);

    const bool up = change.item == u".."_s;
    const bool grow = change.item && !up && FileQueries::isStringInSubstring(path, *change.item)
        && count > navigator.segmentCount();
    const bool known = change.item && navigator.hasLabel(*change.item);
    // Kept: a folder whose name stands on a segment already leaves the complete path as it was,
    // even where it is another folder of that name; segments right of it then lead to the earlier
    // path. A segment for every component must be there, wherever the message comes from.
    if (grow || (!known && !up) || count > navigator.segmentCount()) {
        navigator.setSegmentCount(count);
        _completeNavigatorPath[side] = path;
    }
    for (int i = 0; i < count; ++i)
        navigator.setLabel(i, components[i]);
    setToolTips();
    navigator.setSelectedSegment(count - 1);
}

void PathNavigators::setToolTips()
{
    for (const Side side : { Side::Left, Side::Right }) {
        SegmentedControl &navigator = control(side);
        for (int i = 0; i < navigator.segmentCount(); ++i)
            navigator.setSegmentToolTip(i,
                                        mainModel.showToolTips() ? navigator.label(i) : QString());
    }
}

void PathNavigators::pathNavigatorClicked(Side side)
{
    const SegmentedControl &navigator = control(side);
    const int end = std::min(navigator.selectedSegment() + 1, navigator.segmentCount());
    const QString path =
        PathText::fromComponents(PathText::components(_completeNavigatorPath[side]).mid(0, end));
    const QString item = navigator.label(navigator.selectedSegment());
    mainModel.showFolder(side, { .path = path, .item = item });
    // Also when the pane stayed where it was.
    control(side).setSelectedSegment(int(PathText::components(mainModel.folder(side)).size()) - 1);
}

QString PathNavigators::getCurrentNavigatorPath(Side side) const
{
    const SegmentedControl &navigator = control(side);
    const int end = std::min(navigator.selectedSegment() + 1, navigator.segmentCount());
    return PathText::fromComponents(PathText::components(mainModel.folder(side)).mid(0, end));
}

int PathNavigators::getSelectedSegmentFromSegmentedControl(Side side) const
{
    return control(side).selectedSegment();
}

bool PathNavigators::isItemInNavigatorPath(const QString &item, Side side) const
{
    // Sides differ: the right pane always answers no, so it forgets the remembered row of every
    // folder that is entered by name.
    if (side == Side::Right)
        return false;
    return FileQueries::isStringInSubstring(_completeNavigatorPath[side], item);
}

#include "sheets/viewer/ViewerSheet.h"

#include "base/Localized.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "sheets/images/PictureView.h"
#include "sheets/viewer/FindBar.h"
#include "sheets/viewer/TextArea.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MenuText.h"
#include "widgets/SegmentedControl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int Spacing = 8;
constexpr QSize Usual(1000, 680);
constexpr double ShareOfWindow = 0.94; // of what it stands over, where that is larger

} // namespace

ViewerSheet::ViewerSheet(const QString &path, QWidget *mainWindow)
    : Sheet(mainWindow)
    , textArea(new TextArea(this))
    , pictureView(new PictureView(this))
    , findBar(new FindBar([this](const QString &text) { return marked(text); }, this))
    , modes(new SegmentedControl(this, SegmentedControl::Meaning::Choice))
    , encodings(new QComboBox(this))
    , wraps(new QCheckBox(this))
    , status(new ElidedLabel(Qt::ElideRight, this))
    , _pages(new QStackedWidget(this))
{
    setWindowTitle(FileName::shown(PathText::lastComponent(path)));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint); // as large as the person likes
    rows().addWidget(newChoices(path));
    textArea->setAccessibleName(localized("Content"));
    pictureView->setAccessibleName(localized("Image"));
    _pages->addWidget(textArea);
    _pages->addWidget(pictureView);
    rows().addWidget(_pages, 1);
    rows().addWidget(findBar);
    findBar->hide();
    status->setTextFormat(Qt::PlainText);
    status->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addBesideButtons(*status);
    connect(addQuietButton(localized("Close"), *textArea), &QPushButton::clicked, this,
            &QDialog::accept);
    addKeys();
    const QSize window = mainWindow ? mainWindow->size() * ShareOfWindow : Usual;
    resize(window.expandedTo(minimumSizeHint()));
    textArea->setFocus();
}

QWidget *ViewerSheet::newChoices(const QString &path)
{
    auto *part = new QWidget(this);
    auto *row = new QHBoxLayout(part);
    row->setContentsMargins({});
    row->setSpacing(Spacing);
    auto *name = new ElidedLabel(Qt::ElideMiddle, part);
    name->setTextFormat(Qt::PlainText);
    name->setText(FileName::shown(path));
    name->setToolTip(plainToolTip(FileName::shown(path)));
    row->addWidget(name, 1);
    const QStringList labels { localized("Text"), localized("Bytes"), localized("Image") };
    modes->setSegmentCount(int(labels.size()));
    for (int segment = 0; segment < labels.size(); ++segment) {
        modes->setLabel(segment, labels[segment]);
        modes->setSegmentToolTip(segment,
                                 labels[segment] + u" ("_s
                                     + QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + segment))
                                           .toString(QKeySequence::NativeText)
                                     + u')');
    }
    modes->setAccessibleName(localized("Show as"));
    modes->resize(modes->sizeHint());
    int width = 2; // of the edge
    for (int segment = 0; segment < labels.size(); ++segment)
        width += modes->segmentRect(segment).width();
    modes->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    modes->setMaximumWidth(width); // else it would end in an empty one
    row->addWidget(modes);
    for (const TextEncoding &encoding : TextEncoding::all())
        encodings->addItem(encoding.name());
    encodings->setAccessibleName(localized("Encoding"));
    encodings->setToolTip(localized("Encoding"));
    row->addWidget(encodings);
    wraps->setText(marked(localized("Wrap lines")));
    wraps->setAccessibleName(localized("Wrap lines"));
    wraps->setChecked(true);
    row->addWidget(wraps);
    connect(modes, &SegmentedControl::clicked, this,
            [this] { chooseMode(ViewMode(modes->selectedSegment())); });
    connect(modes, &SegmentedControl::escaped, this, &QDialog::reject);
    connect(encodings, &QComboBox::activated, this, &ViewerSheet::encodingChosen);
    connect(wraps, &QCheckBox::toggled, textArea, &TextArea::setWraps);
    return part;
}

void ViewerSheet::addKeys()
{
    const auto add = [this](const QKeySequence &key, auto act) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, act);
    };
    add(Qt::Key_F3, &QDialog::accept);
    for (const ViewMode mode : { ViewMode::Text, ViewMode::Bytes, ViewMode::Picture })
        add(Qt::CTRL | Qt::Key(Qt::Key_1 + int(mode)), [this, mode] { chooseMode(mode); });
    add(Qt::CTRL | Qt::Key_F, &ViewerSheet::openFind);
    add(Qt::CTRL | Qt::Key_J,
        [this] { findBar->field->text().isEmpty() ? openFind() : Q_EMIT findAsked(); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_J,
        [this] { findBar->field->text().isEmpty() ? openFind() : Q_EMIT findBackwardsAsked(); });
    connect(findBar, &FindBar::nextAsked, this, &ViewerSheet::findAsked);
    connect(findBar, &FindBar::previousAsked, this, &ViewerSheet::findBackwardsAsked);
}

void ViewerSheet::openFind()
{
    if (mode() != ViewMode::Picture && modes->isEnabled())
        findBar->takeKeyboard();
}

void ViewerSheet::chooseMode(ViewMode mode)
{
    if (!modes->isEnabled())
        return;
    setMode(mode);
    Q_EMIT modeChosen(mode);
}

void ViewerSheet::setMode(ViewMode mode)
{
    modes->setSelectedSegment(int(mode));
    const bool isText = mode == ViewMode::Text;
    encodings->setEnabled(isText);
    wraps->setEnabled(isText);
    findBar->setAsBytes(mode == ViewMode::Bytes);
    QWidget *page = mode == ViewMode::Picture ? static_cast<QWidget *>(pictureView) : textArea;
    if (mode == ViewMode::Picture)
        findBar->hide();
    _pages->setCurrentWidget(page);
    page->setFocus();
}

ViewMode ViewerSheet::mode() const
{
    return ViewMode(modes->selectedSegment());
}

void ViewerSheet::setEncoding(const TextEncoding &encoding)
{
    encodings->setCurrentIndex(int(TextEncoding::all().indexOf(encoding)));
}

TextEncoding ViewerSheet::encoding() const
{
    return TextEncoding::all().value(encodings->currentIndex());
}

void ViewerSheet::showMessage(const QString &text)
{
    setMode(ViewMode::Text);
    modes->setSelectedSegment(-1);
    for (QWidget *choice : { static_cast<QWidget *>(modes), static_cast<QWidget *>(encodings),
                             static_cast<QWidget *>(wraps) })
        choice->setEnabled(false);
    textArea->showMessage(text);
}

// Escape ends what is nearest: the search, its field, the sheet.
void ViewerSheet::reject()
{
    bool stopped = false;
    Q_EMIT stopAsked(stopped);
    if (stopped)
        return;
    if (findBar->isVisible() && findBar->isAncestorOf(focusWidget())) {
        findBar->hide();
        textArea->setFocus();
        return;
    }
    Sheet::reject();
}

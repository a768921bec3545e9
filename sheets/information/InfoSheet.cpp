#include "sheets/information/InfoSheet.h"

#include "base/Localized.h"
#include "operations/Permissions.h"
#include "sheets/information/AccountBox.h"
#include "sheets/information/TextField.h"
#include "widgets/Colors.h"
#include "widgets/Icons.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int IconSide = 64;
constexpr int SmallIconSide = 16;
constexpr double NameScale = 1.25;
constexpr double ReadableText = 4.5; // contrast, see Colors
constexpr int NoteLines = 2;
constexpr int RowSpacing = 4;
constexpr int ColumnSpacing = 10;
constexpr int GroupSpacing = 10;

} // namespace

InfoSheet::InfoSheet(QWidget *mainWindow)
    : Sheet(mainWindow)
    , _grid(new QGridLayout)
    , _content(new QWidget(this))
    , _note(new QLabel(this))
{
    setWindowTitle(localized("Information"));
    setAccessibleName(windowTitle());
    // First, for the best letters.
    _ok = addButton(localized("OK"));
    _cancel = addButton(localized("Cancel"));
    _gain = marked(localized("Administrator..."));
    _giveUp = marked(localized("Give up rights"));
    auto *all = new QVBoxLayout(_content);
    all->setContentsMargins({});
    all->setSpacing(GroupSpacing);
    rows().addWidget(_content);
    addHeader();
    all->addLayout(_grid);
    _grid->setVerticalSpacing(RowSpacing);
    _grid->setHorizontalSpacing(ColumnSpacing);
    _grid->setColumnStretch(1, 1);
    _grid->setColumnStretch(2, 1);

    addLine();
    Type = addField(localized("Kind"));
    FileSize = addField(localized("Size"));
    Path = addField(localized("Where"));
    Target = addField(localized("Target"));
    Created = addField(localized("Created"));
    Modified = addField(localized("Modified"));
    addLine();
    OpenWith = new QComboBox(_content);
    OpenWith->setIconSize(QSize(SmallIconSide, SmallIconSide));
    OpenWith->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addRow(localized("Open with"), OpenWith);
    addLine();
    Owner = new AccountBox(_content);
    addRow(localized("Owner"), Owner, OwnerPermissions = newPermissions(localized("Owner")));
    Group = new AccountBox(_content);
    addRow(localized("Group"), Group, GroupPermissions = newPermissions(localized("Group")));
    addRow(localized("Others"), nullptr, Other = newPermissions(localized("Others")));
    addLine();
    LockState = new QCheckBox(marked(localized("Locked")), _content);
    LockState->setAccessibleName(localized("Locked"));
    LockButton = new QPushButton(_content);
    LockButton->setAutoDefault(false);
    addRow({}, LockState, LockButton);

    setTabOrder(LockButton, _ok);
    setTabOrder(_ok, _cancel);
    connect(_ok, &QPushButton::clicked, this, &InfoSheet::okClicked);
    connect(_cancel, &QPushButton::clicked, this, &InfoSheet::reject);
    showRights(false, Press::Gains);
    const auto boxes = findChildren<QComboBox *>();
    for (QComboBox *box : boxes)
        box->installEventFilter(this);
}

void InfoSheet::addHeader()
{
    auto *header = new QHBoxLayout;
    header->setSpacing(GroupSpacing);
    Icon = new QLabel(_content);
    Icon->setFixedSize(IconSide, IconSide);
    Icon->setAccessibleName(localized("Icon"));
    header->addWidget(Icon);
    auto *texts = new QVBoxLayout;
    texts->addStretch();
    Name = new TextField(localized("Name"), _content);
    QFont large = Name->font();
    large.setPointSizeF(large.pointSizeF() * NameScale);
    large.setWeight(QFont::DemiBold);
    Name->setFont(large);
    texts->addWidget(Name);
    _note->setParent(_content);
    _note->setTextFormat(Qt::PlainText);
    _note->setWordWrap(true);
    // It has its place while it is empty, so that nothing moves.
    _note->setFixedHeight(NoteLines * _note->fontMetrics().lineSpacing());
    _note->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    texts->addWidget(_note);
    texts->addStretch();
    header->addLayout(texts, 1);
    static_cast<QVBoxLayout *>(_content->layout())->addLayout(header);
}

TextField *InfoSheet::addField(const QString &name)
{
    auto *field = new TextField(name, _content);
    addRow(name, field);
    return field;
}

QComboBox *InfoSheet::newPermissions(const QString &name)
{
    auto *box = new QComboBox(_content);
    for (char16_t digit = u'0'; digit <= u'7'; ++digit)
        box->addItem(Permissions::permissionToString(digit).value_or(QString()));
    box->setAccessibleName(filled(localized("Permissions: %@"), name));
    // To readers a pop-up's name is what is chosen in it.
    box->setAccessibleDescription(box->accessibleName());
    return box;
}

void InfoSheet::addRow(const QString &name, QWidget *control, QWidget *beside)
{
    const int row = _grid->rowCount();
    if (!name.isEmpty()) {
        // What can only be read takes no letter away.
        const bool isFact = qobject_cast<TextField *>(control) != nullptr;
        auto *label = new QLabel((isFact ? name : marked(name)) + u':', _content);
        label->setTextFormat(Qt::PlainText);
        label->setBuddy(control ? control : beside);
        _grid->addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        if (control)
            control->setAccessibleName(name);
    }
    if (control)
        _grid->addWidget(control, row, 1, 1, beside ? 1 : 2);
    if (beside)
        _grid->addWidget(beside, row, 2);
}

void InfoSheet::addLine()
{
    auto *line = new QFrame(_content);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    const int row = _grid->rowCount();
    _grid->addWidget(line, row, 0, 1, 3);
    _grid->setRowMinimumHeight(row, GroupSpacing);
}

void InfoSheet::showIcon(const QIcon &icon)
{
    Icon->setPixmap(icon.pixmap(QSize(IconSide, IconSide), devicePixelRatioF()));
}

void InfoSheet::showNameColor(const QColor &color)
{
    _nameColor = color;
    tintName();
}

void InfoSheet::tintName()
{
    Name->setTextColor(_nameColor.isValid()
                           ? standingOut(_nameColor, palette().color(QPalette::WindowText),
                                         palette().color(QPalette::Window),
                                         isHighContrast() ? EasyContrast : ReadableText)
                           : QColor());
}

void InfoSheet::showEvent(QShowEvent *event)
{
    _ok->setFocus(); // wherever it was left
    Sheet::showEvent(event);
}

// The wheel turns the lists that are open, which get it themselves, and nothing else: a box that
// the pointer happens to be over would be chosen from unasked.
bool InfoSheet::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return Sheet::eventFilter(watched, event);
    event->ignore();
    return true;
}

void InfoSheet::changeEvent(QEvent *event)
{
    Sheet::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        tintName();
        drawLock();
    }
}

void InfoSheet::drawLock()
{
    // As a picture: a button that has the keyboard would draw an icon in the colour of selections.
    LockButton->setIcon(themedIcon(_rightsHeld ? u"unlock"_s : u"lock"_s)
                            .pixmap(QSize(SmallIconSide, SmallIconSide), devicePixelRatioF()));
}

void InfoSheet::showRights(bool held, Press press)
{
    _rightsHeld = held;
    drawLock();
    const bool givesUp = press == Press::GivesUp;
    const QString text = givesUp ? localized("Give up rights") : localized("Administrator...");
    LockButton->setText(givesUp ? _giveUp : _gain);
    LockButton->setAccessibleName(text);
    LockButton->setToolTip(givesUp ? localized("Give up the administrator's rights")
                                   : localized("Gain the administrator's rights"));
}

void InfoSheet::showNote(const QString &text)
{
    if (_note->text() == text)
        return;
    _note->setText(text);
    _note->setAccessibleName(text);
    if (text.isEmpty())
        return;
    QAccessibleEvent told(_note, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void InfoSheet::setBusy(bool busy)
{
    _busy = busy;
    if (busy)
        _focusBefore = focusWidget();
    for (QWidget *part : { _content, static_cast<QWidget *>(_ok), static_cast<QWidget *>(_cancel) })
        part->setEnabled(!busy);
    if (!busy && _focusBefore)
        _focusBefore->setFocus();
}

void InfoSheet::reject()
{
    if (!_busy)
        Sheet::reject();
}

#include "widgets/Sheet.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QWindow>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 20;
constexpr int BlockSpacing = 16; // between picture, texts and buttons
constexpr int Spacing = 10;
constexpr int ButtonSpacing = 8;
// Fixed, so that texts that change while it stands do not move it; wider where letters are large.
constexpr int Width = 460;
constexpr int Letters = 64;
// The keyboard is back after a few of the window manager's turns; or the person works elsewhere.
constexpr std::chrono::milliseconds LongestWait { 250 };

// A label wraps between words only, and a file name of 255 letters is one word: gives it places to
// break, which nobody sees.
QString breakable(const QString &text)
{
    constexpr int longestRun = 16;
    QString result;
    int run = 0;
    for (const QChar character : text) {
        if (run >= longestRun && !character.isLowSurrogate() && !character.isMark()) {
            result += QChar(0x200B);
            run = 0;
        }
        result += character;
        run = character.isSpace() ? 0 : run + 1;
    }
    return result;
}

// With its "&" no mark of a letter.
QString escaped(const QString &text)
{
    return QString(text).replace(u'&', "&&"_L1);
}

} // namespace

Sheet::Sheet(QWidget *below)
    : QDialog(below)
    , _columns(new QHBoxLayout)
    , _rows(new QVBoxLayout)
    , _buttons(new QHBoxLayout)
{
    setWindowTitle(u"Twinleaf"_s);
    setWindowModality(below ? Qt::WindowModal : Qt::ApplicationModal);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Margin, Margin, Margin, BlockSpacing);
    all->setSpacing(BlockSpacing);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addStrut(std::max(Width, Letters * fontMetrics().averageCharWidth()));
    all->addLayout(_columns);
    all->addLayout(_buttons);
    _columns->setSpacing(BlockSpacing);
    _columns->addLayout(_rows, 1);
    _rows->setSpacing(Spacing);
    _buttons->setSpacing(ButtonSpacing);
    _buttons->addStretch();
    _waitForKeyboard.setSingleShot(true);
    _waitForKeyboard.setInterval(LongestWait);
    _waitForKeyboard.callOnTimeout(this, &QWidget::show);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] {
        if (_waitForKeyboard.isActive() && canShow()) {
            _waitForKeyboard.stop();
            show();
        }
    });
}

bool Sheet::run()
{
    return exec() == Accepted;
}

bool Sheet::canShow() const
{
    const QWidget *below = parentWidget() ? parentWidget()->window() : nullptr;
    return testAttribute(Qt::WA_ShowWithoutActivating) || !below || !below->isVisible()
        || below->isActiveWindow();
}

void Sheet::addBesideButtons(QWidget &widget)
{
    QSizePolicy keepsPlace = widget.sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(keepsPlace);
    _buttons->insertWidget(0, &widget);
}

void Sheet::comeUp()
{
    _up = true;
    if (canShow())
        show();
    else
        _waitForKeyboard.start();
}

void Sheet::goAway()
{
    _up = false;
    _waitForKeyboard.stop();
    hide();
}

QWidget *Sheet::topmost(QWidget *window)
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : window;
}

QLabel *Sheet::addText(const QString &text, TextStyle style)
{
    auto *label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    // As wide as the sheet is, and as high as the text then needs.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->setWordWrap(true);
    label->setText(breakable(text));
    label->setAccessibleName(text);
    if (style == TextStyle::Headline) {
        QFont bold = label->font();
        bold.setWeight(QFont::DemiBold);
        label->setFont(bold);
    }
    _rows->addWidget(label);
    return label;
}

void Sheet::addHeadlineOf(QWidget &field, const QString &text)
{
    QLabel *label = addText(text, TextStyle::Headline);
    label->setText(breakable(marked(escaped(text))));
    label->setBuddy(&field);
    field.setAccessibleName(text);
}

void Sheet::setPicture(const QIcon &icon, int side)
{
    auto *picture = new QLabel(this);
    picture->setPixmap(icon.pixmap(QSize(side, side), devicePixelRatioF()));
    picture->setAccessibleName(windowTitle());
    _columns->insertWidget(0, picture, 0, Qt::AlignTop);
}

QPushButton *Sheet::addButton(const QString &text)
{
    auto *button = new QPushButton(marked(escaped(text)), this);
    button->setAccessibleName(text);
    button->setDefault(_buttons->count() == 1);
    _buttons->addWidget(button);
    return button;
}

QPushButton *Sheet::addQuietButton(const QString &text, QWidget &focused)
{
    QPushButton *button = addButton(text);
    button->setDefault(false);
    button->setAutoDefault(false);
    focused.setFocusPolicy(Qt::StrongFocus);
    return button;
}

#include "widgets/Sheet.h"

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 20;
constexpr int Spacing = 10;
constexpr int ButtonSpacing = 8;
// Fixed, so that texts that change while it stands do not move it; wider where letters are large.
constexpr int Width = 460;
constexpr int Letters = 64;

} // namespace

Sheet::Sheet(QWidget *mainWindow)
    : QDialog(mainWindow)
    , _rows(new QVBoxLayout)
    , _buttons(new QHBoxLayout)
{
    setWindowTitle(u"Twinleaf"_s);
    setWindowModality(Qt::WindowModal);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Margin, Margin, Margin, Margin * 3 / 4);
    all->setSpacing(Margin * 3 / 4);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addStrut(std::max(Width, Letters * fontMetrics().averageCharWidth()));
    all->addLayout(_rows);
    _rows->setSpacing(Spacing);
    _buttons->setSpacing(ButtonSpacing);
    auto *buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addLayout(_buttons);
    all->addLayout(buttonRow);
}

bool Sheet::run()
{
    return exec() == Accepted;
}

QPushButton *Sheet::addButton(const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setAccessibleName(text);
    button->setDefault(_buttons->isEmpty());
    _buttons->addWidget(button);
    return button;
}

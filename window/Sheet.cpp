#include "window/Sheet.h"

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 20;
constexpr int Spacing = 10;
constexpr int Width = 460; // fixed: texts that change while it stands must not move it

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
    all->addStrut(Width);
    all->addLayout(_rows);
    _rows->setSpacing(Spacing);
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

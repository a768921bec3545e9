#include "widgets/ApplicationPanel.h"

#include "base/Localized.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int PathRole = Qt::UserRole;
constexpr int ListHeight = 360;
constexpr int IconSide = 24;

} // namespace

ApplicationPanel::ApplicationPanel(const QList<Application> &applications, QWidget *below)
    : Sheet(below)
    , _list(new QListWidget(this))
{
    setWindowTitle(localized("Choose Application"));
    setAccessibleName(windowTitle());
    auto *filter = new QLineEdit(this);
    filter->setPlaceholderText(localized("Search"));
    filter->setAccessibleName(localized("Search"));
    filter->setClearButtonEnabled(true);
    _list->setAccessibleName(localized("Applications"));
    _list->setIconSize(QSize(IconSide, IconSide));
    _list->setFixedHeight(ListHeight);
    for (const Application &application : applications) {
        auto *item = new QListWidgetItem(application.icon, application.name, _list);
        item->setData(PathRole, application.path);
    }
    rows().addWidget(filter);
    rows().addWidget(_list);
    filter->setFocus();

    _open = addButton(localized("Choose"));
    QPushButton *other = addButton(localized("Other..."));
    connect(_open, &QPushButton::clicked, this, &ApplicationPanel::take);
    connect(other, &QPushButton::clicked, this, &ApplicationPanel::takeOther);
    connect(addButton(localized("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    connect(filter, &QLineEdit::textChanged, this, &ApplicationPanel::narrow);
    connect(_list, &QListWidget::itemActivated, this, &ApplicationPanel::take);
    narrow({});
}

std::optional<QString> ApplicationPanel::choose()
{
    return run() ? std::optional(_chosen) : std::nullopt;
}

void ApplicationPanel::narrow(const QString &text)
{
    QListWidgetItem *first = nullptr;
    for (int row = 0; row < _list->count(); ++row) {
        QListWidgetItem *item = _list->item(row);
        item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
        if (!first && !item->isHidden())
            first = item;
    }
    _list->setCurrentItem(first);
    _open->setEnabled(first);
}

void ApplicationPanel::take()
{
    const QListWidgetItem *item = _list->currentItem();
    if (!item)
        return;
    _chosen = item->data(PathRole).toString();
    accept();
}

void ApplicationPanel::takeOther()
{
    _chosen = QFileDialog::getOpenFileName(this, windowTitle(), u"/usr/bin"_s);
    if (!_chosen.isEmpty())
        accept();
}

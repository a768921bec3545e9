#include "platform/desktop/DesktopOpenPanel.h"

#include "base/Localized.h"
#include "platform/desktop/InstalledApplications.h"
#include "platform/OpenDialogs.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int pathRole = Qt::UserRole;

// The installed applications with a field that narrows the list, and a way to any other program.
class ApplicationPanel final : public QDialog {
public:
    explicit ApplicationPanel(QWidget *parent)
        : QDialog(parent)
    {
        setWindowTitle(localized("Choose Application"));
        setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
        resize(420, 480);

        auto *filter = new QLineEdit(this);
        filter->setPlaceholderText(localized("Search"));
        filter->setAccessibleName(localized("Search"));
        filter->setClearButtonEnabled(true);
        _list = new QListWidget(this);
        _list->setAccessibleName(localized("Applications"));
        _list->setIconSize(QSize(24, 24));
        for (const auto &application : InstalledApplications::all()) {
            auto *item = new QListWidgetItem(application.icon, application.name, _list);
            item->setData(pathRole, application.path);
        }
        _list->setCurrentRow(0);

        auto *buttons =
            new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
        QPushButton *other =
            buttons->addButton(localized("Other..."), QDialogButtonBox::ActionRole);
        other->setAutoDefault(false);
        auto *rows = new QVBoxLayout(this);
        rows->addWidget(filter);
        rows->addWidget(_list);
        rows->addWidget(buttons);

        connect(filter, &QLineEdit::textChanged, this, &ApplicationPanel::narrow);
        connect(_list, &QListWidget::itemActivated, this, &ApplicationPanel::take);
        connect(buttons, &QDialogButtonBox::accepted, this, &ApplicationPanel::take);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        connect(other, &QPushButton::clicked, this, &ApplicationPanel::takeOther);
    }

    QString chosen() const { return _chosen; }

private:
    void narrow(const QString &text)
    {
        QListWidgetItem *first = nullptr;
        for (int row = 0; row < _list->count(); ++row) {
            QListWidgetItem *item = _list->item(row);
            item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
            if (!first && !item->isHidden())
                first = item;
        }
        _list->setCurrentItem(first);
    }

    void take()
    {
        const QListWidgetItem *item = _list->currentItem();
        if (!item)
            return;
        _chosen = item->data(pathRole).toString();
        accept();
    }

    void takeOther()
    {
        const QString path = QFileDialog::getOpenFileName(this, windowTitle(), u"/usr/bin"_s);
        if (path.isEmpty())
            return;
        _chosen = path;
        accept();
    }

    QListWidget *_list;
    QString _chosen;
};

} // namespace

std::optional<QString> DesktopOpenPanel::chooseApplication()
{
    const OpenDialogs::Guard guard(_openDialogs);
    QWidget *modal = QApplication::activeModalWidget();
    ApplicationPanel panel(modal ? modal : _parent.data());
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    return panel.chosen();
}

std::optional<QString> DesktopOpenPanel::chooseFolder(const QString &start)
{
    const OpenDialogs::Guard guard(_openDialogs);
    QWidget *modal = QApplication::activeModalWidget();
    // The dialog cannot go to a folder whose name is no text; it starts at home then.
    const bool isText = start.isValidUtf16();
    const QString folder = QFileDialog::getExistingDirectory(
        modal ? modal : _parent.data(), localized("Choose Folder"), isText ? start : QString());
    if (folder.isEmpty())
        return std::nullopt;
    return folder;
}

#include "window/ExpandSelectionSheet.h"

#include "platform/Localized.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

ExpandSelectionSheet::ExpandSelectionSheet(const QString &title, QWidget *mainWindow)
    : Sheet(mainWindow)
{
    auto *expandSelectionTitle = new QLabel(title, this);
    expandSelectionTitle->setTextFormat(Qt::PlainText);
    QFont bold = font();
    bold.setBold(true);
    expandSelectionTitle->setFont(bold);
    setAccessibleName(title);
    rows().addWidget(expandSelectionTitle);

    auto *choices = new QHBoxLayout;
    rows().addLayout(choices);
    const auto addChoice = [&](const QString &name, const QStringList &items) {
        auto *choice = new QComboBox(this);
        choice->addItems(items);
        choice->setAccessibleName(name);
        choices->addWidget(choice, 1);
        return choice;
    };
    // In the order of the enumerations.
    expandSelectionTarget =
        addChoice(localized("Column"),
                  { localized("Name"), localized("Size"), localized("Date"), localized("Type") });
    expandSelectionMethod = addChoice(localized("Comparison"),
                                      { localized("contains"), localized("begins with"),
                                        localized("ends with"), localized("equals") });

    expandSelectionText = new QLineEdit(this);
    expandSelectionText->setAccessibleName(localized("Text"));
    rows().addWidget(expandSelectionText);
    caseSensitive = new QCheckBox(localized("Case sensitive"), this);
    rows().addWidget(caseSensitive);

    connect(addButton(localized("OK")), &QPushButton::clicked, this, &QDialog::accept);
    connect(addButton(localized("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    expandSelectionText->setFocus();
}

ExpandSelection ExpandSelectionSheet::getInput()
{
    if (!run())
        return {};
    return { static_cast<MatchTarget>(expandSelectionTarget->currentIndex()),
             static_cast<MatchMethod>(expandSelectionMethod->currentIndex()),
             expandSelectionText->text(), caseSensitive->isChecked() };
}

#include "sheets/ExpandSelectionSheet.h"

#include "base/Localized.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr double SmallSize = 0.9; // of the other texts

} // namespace

ExpandSelectionSheet::ExpandSelectionSheet(const QString &title, const ExpandSelection &last,
                                           QWidget *mainWindow)
    : Sheet(mainWindow)
{
    setAccessibleName(title);
    addText(title, TextStyle::Headline);
    auto *choices = new QHBoxLayout;
    rows().addLayout(choices);
    const auto addChoice = [&](const QString &name, const QStringList &items, auto chosen) {
        auto *choice = new QComboBox(this);
        choice->addItems(items);
        choice->setCurrentIndex(int(chosen));
        choice->setAccessibleName(name);
        choices->addWidget(choice, 1);
        return choice;
    };
    // In the order of the enumerations.
    expandSelectionTarget =
        addChoice(localized("Column"),
                  { localized("Name"), localized("Size"), localized("Date"), localized("Type") },
                  last.target);
    expandSelectionMethod = addChoice(localized("Comparison"),
                                      { localized("contains"), localized("begins with"),
                                        localized("ends with"), localized("equals") },
                                      last.method);

    expandSelectionText = new QLineEdit(last.text, this);
    expandSelectionText->selectAll(); // typing begins a new pattern
    expandSelectionText->setAccessibleName(localized("Text"));
    rows().addWidget(expandSelectionText);
    QLabel *hint = addText(localized("* stands for any text, ? for one character."));
    QFont small = hint->font();
    small.setPointSizeF(small.pointSizeF() * SmallSize);
    hint->setFont(small);
    expandSelectionText->setAccessibleDescription(hint->text());
    caseSensitive = new QCheckBox(marked(localized("Case sensitive")), this);
    caseSensitive->setChecked(last.caseSensitive);
    rows().addWidget(caseSensitive);

    connect(addButton(localized("OK")), &QPushButton::clicked, this, &QDialog::accept);
    connect(addButton(localized("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    expandSelectionText->setFocus();
}

ExpandSelection ExpandSelectionSheet::getInput()
{
    const bool agreed = run();
    return { static_cast<MatchTarget>(expandSelectionTarget->currentIndex()),
             static_cast<MatchMethod>(expandSelectionMethod->currentIndex()),
             agreed ? expandSelectionText->text() : QString(), caseSensitive->isChecked() };
}

#include "widgets/InputSheet.h"

#include "base/Localized.h"
#include "widgets/PathField.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

InputSheet::InputSheet(const QString &prompt, const QString &text, QWidget *mainWindow)
    : Sheet(mainWindow)
    , inputText(new QLineEdit(this))
{
    build(prompt, text);
}

InputSheet::InputSheet(const QString &prompt, const QString &path, DiskQuestions &questions,
                       QWidget *mainWindow)
    : Sheet(mainWindow)
    , inputText(new PathField(questions, this))
{
    build(prompt, path);
}

void InputSheet::build(const QString &prompt, const QString &text)
{
    inputText->setText(text);
    setAccessibleName(prompt);
    addHeadlineOf(*inputText, prompt);
    rows().addWidget(inputText);
    connect(addButton(localized("OK")), &QPushButton::clicked, this, &QDialog::accept);
    connect(addButton(localized("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    inputText->setFocus();
    selectName();
}

void InputSheet::selectName()
{
    // What a person mostly changes: a name without its extension, a path as a whole.
    const QString text = inputText->text();
    const auto dot = text.lastIndexOf(u'.');
    if (dot > 0 && !text.contains(u'/'))
        inputText->setSelection(0, int(dot));
    else
        inputText->selectAll();
}

QString InputSheet::getString()
{
    return run() ? inputText->text() : QString();
}

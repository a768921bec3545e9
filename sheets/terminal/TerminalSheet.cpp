#include "sheets/terminal/TerminalSheet.h"

#include "base/Localized.h"
#include "sheets/terminal/CommandField.h"
#include "sheets/terminal/OutputView.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MenuText.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

using namespace Qt::StringLiterals;

TerminalSheet::TerminalSheet(QWidget *mainWindow)
    : Sheet(mainWindow)
    , currentPathField(new QLineEdit(this))
    , output(new OutputView(this))
    , commandField(new CommandField(this))
    , _spinner(new ActivitySpinner(this))
    , _state(new ElidedLabel(Qt::ElideMiddle, this))
{
    setWindowTitle(localized("Internal terminal"));
    setAccessibleName(windowTitle());
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint); // as large as the person likes
    setSizeGripEnabled(true);
    rows().addWidget(newFolderLine());
    output->setAccessibleName(localized("Output"));
    rows().addWidget(output, 1);
    auto *commandLine = new QHBoxLayout;
    auto *label = new QLabel(marked(localized("Command:")), this);
    label->setBuddy(commandField);
    commandField->setAccessibleName(localized("Command:"));
    commandField->setFont(output->font());
    commandLine->addWidget(label);
    commandLine->addWidget(commandField, 1);
    rows().addLayout(commandLine);
    rows().addWidget(newStateLine());

    auto *beside = new QWidget(this);
    auto *buttons = new QHBoxLayout(beside);
    buttons->setContentsMargins(0, 0, 0, 0);
    _stop = newButton(localized("Stop"));
    QPushButton *clear = newButton(localized("Clear"));
    QPushButton *reset = newButton(localized("Reset"));
    for (QPushButton *button : { _stop, clear, reset })
        buttons->addWidget(button);
    addBesideButtons(*beside);
    QPushButton *done = addButton(localized("Done"));
    done->setDefault(false);
    done->setAutoDefault(false);
    setTabOrder(commandField, _stop);
    setTabOrder(_stop, clear);
    setTabOrder(clear, reset);
    setTabOrder(reset, done);

    connect(_stop, &QPushButton::clicked, this, &TerminalSheet::stopAsked);
    connect(clear, &QPushButton::clicked, this, &TerminalSheet::deleteAsked);
    connect(reset, &QPushButton::clicked, this, &TerminalSheet::resetAsked);
    connect(done, &QPushButton::clicked, this, &QDialog::reject);
    connect(commandField, &CommandField::stopAsked, this, &TerminalSheet::copyOrStop);
    connect(commandField, &CommandField::pageAsked, output, [this](int pages) {
        QScrollBar *bar = output->verticalScrollBar();
        bar->setValue(bar->value() + pages * bar->pageStep());
    });
    showRunning(0);
}

// Who has selected something of the output means that, wherever the focus is; and then no more.
void TerminalSheet::copyOrStop()
{
    QTextCursor selection = output->textCursor();
    if (!selection.hasSelection())
        return Q_EMIT stopAsked();
    output->copy();
    selection.clearSelection();
    output->setTextCursor(selection);
}

QPushButton *TerminalSheet::newButton(const QString &text)
{
    auto *button = new QPushButton(marked(text), this);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

QWidget *TerminalSheet::newFolderLine()
{
    auto *line = new QWidget(this);
    auto *columns = new QHBoxLayout(line);
    columns->setContentsMargins(0, 0, 0, 0);
    currentPathField->setReadOnly(true);
    currentPathField->setAccessibleName(localized("Current folder:"));
    auto *label = new QLabel(marked(localized("Current folder:")), line);
    label->setBuddy(currentPathField);
    QPushButton *ofPane = newButton(localized("Folder of the active pane"));
    connect(ofPane, &QPushButton::clicked, this, &TerminalSheet::activeFolderAsked);
    columns->addWidget(label);
    columns->addWidget(currentPathField, 1);
    columns->addWidget(ofPane);
    return line;
}

QWidget *TerminalSheet::newStateLine()
{
    auto *line = new QWidget(this);
    auto *columns = new QHBoxLayout(line);
    columns->setContentsMargins(0, 0, 0, 0);
    _state->setTextFormat(Qt::PlainText);
    columns->addWidget(_spinner);
    columns->addWidget(_state, 1);
    return line;
}

void TerminalSheet::showEvent(QShowEvent *event)
{
    Sheet::showEvent(event);
    commandField->setFocus();
}

void TerminalSheet::showRunning(int count)
{
    if (_spinning != (count > 0)) {
        _spinning = count > 0;
        if (_spinning)
            _spinner->start();
        else
            _spinner->stop();
    }
    _stop->setEnabled(count > 0);
    QStringList parts;
    if (count > 0)
        parts.append(filled(localized("Running: %i"), count));
    if (!_end.isEmpty())
        parts.append(_end);
    _state->setText(parts.join(u"   "_s));
    _state->setToolTip(plainToolTip(_end));
    _state->setAccessibleName(_state->text());
}

void TerminalSheet::showEnd(const QString &line)
{
    _end = line;
}

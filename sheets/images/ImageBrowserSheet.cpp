#include "sheets/images/ImageBrowserSheet.h"

#include "base/Localized.h"
#include "sheets/images/ImageKeys.h"
#include "sheets/images/ImageRows.h"
#include "sheets/images/ImageTable.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/ElidedLabel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int Spacing = 8;
constexpr int ChoiceSpacing = 14;
constexpr int TableWidth = 320;
constexpr QSize Usual(1040, 680);
constexpr double ShareOfWindow = 0.94; // of what it stands over, where that is larger

} // namespace

ImageBrowserSheet::ImageBrowserSheet(ImageRows &images, QWidget *mainWindow)
    : Sheet(mainWindow)
    , tableView(new ImageTable(images, this))
    , imageView(new PictureView(this))
    , currentPath(new ElidedLabel(Qt::ElideMiddle, this))
    , imageName(newText(localized("Name")))
    , imageDimensions(newText(localized("Dimensions")))
    , imageSize(newText(localized("Size")))
    , imageDate(newText(localized("Date")))
    , progressIndicator(new ActivitySpinner(this))
    , scaling(new QButtonGroup(this))
    , animates(new QCheckBox(this))
{
    setWindowTitle(localized("Image browser"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    QPushButton *done = addQuietButton(localized("Done"), *tableView);
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint); // it can be made larger
    rows().addWidget(newFolderRow());
    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(tableView);
    splitter->addWidget(newPicturePart());
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({ TableWidth, Usual.width() - TableWidth });
    splitter->setChildrenCollapsible(false);
    rows().addWidget(splitter, 1);
    addBesideButtons(*newChoices());
    tableView->setAccessibleName(localized("Images"));
    imageView->setAccessibleName(localized("Image"));
    const QSize window = mainWindow ? mainWindow->size() * ShareOfWindow : Usual;
    resize(window.expandedTo(minimumSizeHint()));

    connect(done, &QPushButton::clicked, this, &ImageBrowserSheet::closeAsked);
    connect(imageView, &PictureView::keyPressed, tableView, [this](QKeyEvent *event) {
        const int count = tableView->model()->rowCount();
        if (const auto row = rowOfKey(*event, tableView->selectedRow(), count)) {
            tableView->selectRow(*row);
            event->accept();
        }
    });
    tableView->setFocus();
}

ElidedLabel *ImageBrowserSheet::newText(const QString &name)
{
    auto *text = new ElidedLabel(Qt::ElideMiddle, this);
    text->setAccessibleName(name);
    return text;
}

QWidget *ImageBrowserSheet::newFolderRow()
{
    auto *part = new QWidget(this);
    auto *row = new QHBoxLayout(part);
    row->setContentsMargins({});
    row->setSpacing(Spacing);
    currentPath->setAccessibleName(localized("Folder"));
    auto *choose = new QPushButton(marked(localized("Choose...")), part);
    choose->setAccessibleName(localized("Choose..."));
    choose->setAutoDefault(false);
    row->addWidget(currentPath, 1);
    row->addWidget(progressIndicator);
    row->addWidget(choose);
    connect(choose, &QPushButton::clicked, this, &ImageBrowserSheet::openAsked);
    return part;
}

QWidget *ImageBrowserSheet::newPicturePart()
{
    auto *part = new QWidget(this);
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins({});
    column->setSpacing(Spacing);
    column->addWidget(imageView, 1);
    auto *texts = new QHBoxLayout;
    texts->setSpacing(2 * ChoiceSpacing);
    QFont bold = imageName->font();
    bold.setWeight(QFont::DemiBold);
    imageName->setFont(bold);
    texts->addWidget(imageName, 1);
    for (ElidedLabel *text : { imageDimensions, imageSize, imageDate })
        texts->addWidget(text);
    column->addLayout(texts);
    return part;
}

QWidget *ImageBrowserSheet::newChoices()
{
    auto *part = new QWidget(this);
    auto *row = new QHBoxLayout(part);
    row->setContentsMargins({});
    row->setSpacing(ChoiceSpacing);
    const QStringList choices { localized("Scale down"), localized("Scale to fit"),
                                localized("Stretch"), localized("Actual size") };
    for (int number = 0; number < choices.size(); ++number) {
        auto *choice = new QRadioButton(marked(choices[number]), part);
        choice->setAccessibleName(choices[number]);
        scaling->addButton(choice, number);
        row->addWidget(choice);
    }
    animates->setParent(part);
    animates->setText(marked(localized("Animate")));
    animates->setAccessibleName(localized("Animate"));
    row->addSpacing(ChoiceSpacing);
    row->addWidget(animates);
    return part;
}

#include "sheets/About.h"

#include "base/Localized.h"
#include "model/Launching.h"
#include "widgets/AddressField.h"
#include "widgets/Icons.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int PictureSide = 64;
constexpr double NameScale = 1.4;

} // namespace

About::About(const Texts &texts, Launching &launching, QWidget *mainWindow)
    : Sheet(mainWindow)
{
    setAccessibleName(localized("About Twinleaf"));
    setPicture(themedIcon(u"org.twinleaf.Twinleaf"_s), PictureSide);
    QLabel *name = addText(texts.name, TextStyle::Headline);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * NameScale);
    name->setFont(large);
    addText(texts.version);
    addText(texts.copyright);

    const auto open = [&launching](const QString &address) { launching.openAddress(address); };
    QList<AddressField *> fields;
    if (!texts.webAddress.isEmpty())
        fields.append(new WebTextField(texts.webAddress, this));
    if (!texts.mailAddress.isEmpty())
        fields.append(new MailTextField(texts.mailAddress, this));
    for (AddressField *field : fields) {
        rows().addWidget(field);
        connect(field, &QLabel::linkActivated, this, open);
    }
    rows().addStretch();

    connect(addButton(localized("OK")), &QPushButton::clicked, this, &QDialog::accept);
    if (!texts.donationAddress.isEmpty())
        connect(addButton(localized("Donate...")), &QPushButton::clicked, this,
                [address = texts.donationAddress, open] { open(address); });
}

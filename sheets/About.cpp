#include "sheets/About.h"

#include "base/Localized.h"
#include "model/Launching.h"
#include "widgets/AddressField.h"
#include "widgets/Icons.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

About::About(const Texts &texts, Launching &launching, QWidget *mainWindow)
    : Sheet(mainWindow)
{
    setAccessibleName(localized("About Twinleaf"));
    auto *icon = new QLabel(this);
    icon->setPixmap(themedIcon(u"org.twinleaf.Twinleaf"_s, u"folder"_s)
                        .pixmap(QSize(64, 64), devicePixelRatioF()));
    icon->setAccessibleName(texts.name);
    rows().addWidget(icon, 0, Qt::AlignHCenter);
    addText(texts.name, true);
    addText(texts.version, false);
    addText(texts.copyright, false);

    QList<AddressField *> fields;
    if (!texts.webAddress.isEmpty())
        fields.append(new WebTextField(texts.webAddress, this));
    if (!texts.mailAddress.isEmpty())
        fields.append(new MailTextField(texts.mailAddress, this));
    for (AddressField *field : fields) {
        rows().addWidget(field, 0, Qt::AlignHCenter);
        connect(field, &QPushButton::clicked, this,
                [field, &launching] { launching.openAddress(field->address()); });
    }

    connect(addButton(localized("OK")), &QPushButton::clicked, this, &QDialog::accept);
    if (!texts.donationAddress.isEmpty())
        connect(addButton(localized("Donate...")), &QPushButton::clicked, this,
                [address = texts.donationAddress, &launching] { launching.openAddress(address); });
}

void About::addText(const QString &text, bool large)
{
    auto *label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignHCenter);
    if (large) {
        QFont font = label->font();
        font.setPointSizeF(font.pointSizeF() * 1.4);
        font.setBold(true);
        label->setFont(font);
    }
    rows().addWidget(label);
}

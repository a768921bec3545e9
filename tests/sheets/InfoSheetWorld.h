#pragma once

#include "sheets/information/AccountBox.h"
#include "sheets/information/InfoSheet.h"
#include "sheets/information/TextField.h"
#include "tests/support/World.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include <sys/stat.h>
#include <unistd.h>

inline constexpr uid_t Nobodys = 54321; // no account has this number

// The sheet over the real files of the left pane.
struct Information : StartedWorld {
    explicit Information(const QString &words)
        : StartedWorld(words)
    {
        auto &controller = application.infoSheetController();
        controller.setAccountSource([this] { return accounts; });
        authorization.personAgrees = true;
    }

    // Opens it for the item, and closes it when `act` has not.
    void show(const QString &name, const std::function<void(InfoSheet &)> &act)
    {
        whenSheetOpens(window, [act](QWidget &opened) {
            auto *sheet = qobject_cast<InfoSheet *>(&opened);
            QVERIFY(sheet);
            act(*sheet);
            if (sheet->isVisible())
                sheet->reject();
        });
        const QString path = name.startsWith(u'/') ? name : folder.path(u"left/"_s + name);
        application.infoSheetController().showInfoSheet(
            { .source = PathText::parent(path),
              .items = { PathText::lastComponent(path) },
              .side = Side::Left,
              .updateBoth = UpdateBoth::No });
    }
    // The same once the item has been read.
    void showRead(const QString &name, const std::function<void(InfoSheet &)> &act)
    {
        show(name, [act](InfoSheet &sheet) {
            QTRY_VERIFY(!sheet.Modified->text().isEmpty());
            act(sheet);
        });
    }

    struct stat status(const QString &name) const
    {
        struct stat status { };
        if (lstat(folder.bytes(u"left/"_s + name), &status) != 0)
            qFatal("%s", qPrintable(name));
        return status;
    }
    void setMode(const QString &name, mode_t mode) const
    {
        if (chmod(folder.bytes(u"left/"_s + name), mode) != 0)
            qFatal("chmod");
    }

    AccountNames accounts { { u"root"_s, u"ann"_s, u"bob"_s }, { u"root"_s, u"staff"_s } };
};

inline void ok(InfoSheet &sheet)
{
    QTest::keyClick(&sheet, Qt::Key_Return);
}

inline QString note(const InfoSheet &sheet)
{
    QStringList texts;
    const auto labels = sheet.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        if (label->wordWrap())
            texts.append(label->text());
    return texts.join(u'|');
}

inline QString permissions(const InfoSheet &sheet)
{
    QString digits;
    for (const QComboBox *box : sheet.permissions())
        digits += box->currentIndex() < 0 ? u'-' : QChar(u'0' + box->currentIndex());
    return digits;
}

inline QString currentUser()
{
    return userName(geteuid());
}

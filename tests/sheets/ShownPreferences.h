#pragma once

#include "tests/support/World.h"
#include "widgets/RecordTable.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>

// The preferences as a person finds them, while the sheet is open.
struct Shown {
    QDialog &sheet;

    template <typename Control>
    Control &control(const QString &name) const
    {
        const auto controls = sheet.findChildren<Control *>();
        for (Control *each : controls)
            if (each->accessibleName() == name)
                return *each;
        qFatal("No control '%s'", qPrintable(name));
    }
    void click(const QString &name) const { control<QAbstractButton>(name).click(); }
    QComboBox &key(const QString &command) const
    {
        return control<QComboBox>(u"Key of '%1'"_s.arg(command));
    }
    QComboBox &modifier(const QString &command) const
    {
        return control<QComboBox>(u"Modifier of '%1'"_s.arg(command));
    }
    void choose(const QString &name, int item) const
    {
        auto &choice = control<QComboBox>(name);
        choice.setCurrentIndex(item);
        Q_EMIT choice.activated(item);
    }
    RecordTable &table() const { return *sheet.findChild<RecordTable *>(); }
};

enum class End { Ok, Close };

inline void preferences(World &world, const std::function<void(const Shown &)> &act,
                        End end = End::Ok)
{
    bool seen = false;
    whenSheetOpens(world.window, [&](QWidget &sheet) {
        seen = true;
        const Shown shown { static_cast<QDialog &>(sheet) };
        act(shown);
        if (end == End::Ok)
            shown.click(u"OK"_s);
        else
            QTest::keyClick(&sheet, Qt::Key_Escape);
    });
    world.run(Command::Preferences);
    QVERIFY(seen);
}

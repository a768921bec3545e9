#pragma once

#include "tests/support/World.h"
#include "window/Toolbar.h"
#include "window/ToolbarItems.h"
#include "window/UnifiedToolBar.h"

#include <QToolButton>

inline QVariantMap favorite(const QString &name, const QString &path)
{
    return { { u"Name"_s, name }, { u"RealPath"_s, path }, { u"LocalizedPath"_s, path } };
}

inline QVariantMap items(const QStringList &identifiers)
{
    return { { u"TB Item Identifiers"_s, QVariantList(identifiers.begin(), identifiers.end()) } };
}

inline const QString Separator = QString::fromLatin1(ToolbarSeparator.identifier);
inline const QString Default =
    u"Copy Move New_folder Delete Rename | Image_browser Internal_terminal"_s;

struct ToolbarWorld : World {
    using World::World;

    UnifiedToolBar *bar() { return window.findChild<UnifiedToolBar *>(); }
    QAction *item(const QString &text)
    {
        const auto all = bar()->actions();
        for (QAction *each : all)
            if (each->text() == text)
                return each;
        return nullptr;
    }
    QToolButton *button(const QString &text)
    {
        return qobject_cast<QToolButton *>(bar()->widgetForAction(item(text)));
    }
    // What can be seen, with "|" for separators and "-" for spaces.
    QString shown()
    {
        QStringList texts;
        const auto all = bar()->actions();
        for (const QAction *each : all)
            if (each->isVisible())
                texts.append(each->isSeparator() ? u"|"_s
                                 : each->text().isEmpty()
                                 ? u"-"_s
                                 : QString(each->text()).replace(u' ', u'_'));
        return texts.join(u' ');
    }
    QVariant stored() const { return defaults.value(Settings::Toolbar); }
    QStringList storedItems() const
    {
        QStringList identifiers;
        const QVariantList list = stored().toMap().value(u"TB Item Identifiers"_s).toList();
        for (const QVariant &each : list)
            identifiers.append(each.toString());
        return identifiers;
    }
};

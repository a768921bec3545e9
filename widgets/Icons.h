#pragma once

#include <QIcon>
#include <QString>

// Icons by their freedesktop name ("folder", "edit-copy", "text-x-generic", ...): the theme's, else
// the program's own drawing in icons/, so that a bare system shows all of them. What a drawing has
// in "currentColor" takes the colour of the palette's texts. Sharp at any scale. Main thread.
QIcon themedIcon(const QString &name, const QString &fallback = {});

// An application's own icon, where it has one and it is known by now; else the general one.
QIcon applicationIcon(const QIcon &own);

// One of the drawings for the toolbar, in icons/toolbar/, on a ground that stays the window's under
// the pointer. Never the theme's: of these a theme has a few only, and in another hand. Main
// thread.
QIcon toolbarIcon(const QString &image);

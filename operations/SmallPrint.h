#pragma once

#include <QStringList>

struct Alert;

// Lines as the small print of an alert, which must fit on the screen. Any thread.
QString shortened(const QStringList &lines);

// An error that calls for no decision, and what it is about, a line each.
Alert remark(const QString &text, const QStringList &lines);

// What is the matter with an item, as one line.
QString lineAbout(const QString &name, const QString &reason);

// What a program has written, as lines that may be shown.
QStringList shownLines(const QString &text);

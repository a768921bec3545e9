#pragma once

#include <QStringList>

// Lines as the small print of an alert, which must fit on the screen. Any thread.
QString shortened(const QStringList &lines);

#pragma once

#include <QList>

// Row numbers of a pane, ascending, each once.
using RowSet = QList<int>;

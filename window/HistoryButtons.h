#pragma once

#include "model/FolderHistory.h"

#include <QObject>

#include <functional>

// The buttons of a mouse that go back and forward, over a pane: the pane follows, and nothing in it
// takes them for clicks.
class HistoryButtons final : public QObject {
    Q_OBJECT

public:
    using Go = std::function<void(FolderHistory::Way way)>;

    // With whatever stands on the pane now.
    HistoryButtons(QWidget &pane, Go go);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const Go _go;
};

#pragma once

#include "widgets/Sheet.h"

#include <QIcon>

#include <optional>

class QListWidget;

// Lets a person pick one of some applications: a field that narrows their list, and a way to any
// other program.
class ApplicationPanel final : public Sheet {
    Q_OBJECT

public:
    struct Application {
        QString path;
        QString name;
        QIcon icon;
    };
    ApplicationPanel(const QList<Application> &applications, QWidget *below);

    // The path of the application; none when cancelled.
    std::optional<QString> choose();

private:
    void narrow(const QString &text);
    void take();
    void takeOther();

    QListWidget *_list;
    QPushButton *_open;
    QString _chosen;
};

#pragma once

#include <QComboBox>

class QStringListModel;

// A pop-up of account names that is searched by typing any part of one. What is typed and is no
// name is given up for the one that was chosen before. Main thread.
class AccountBox final : public QComboBox {
    Q_OBJECT

public:
    explicit AccountBox(QWidget *parent);

    void setNames(const QStringList &names); // the choice stays
    void setTitle(const QString &name); // chosen even where it is none of the names
    QString title() const { return _title; }

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void takeTyped();

    QStringListModel *_model;
    QStringList _names; // without the one that is none of them
    QString _title;
};

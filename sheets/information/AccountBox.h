#pragma once

#include <QComboBox>

class QStringListModel;

// A pop-up of account names that is searched by typing any part of one. What is typed and is no
// name stays to be corrected, the one before being chosen still. Main thread.
class AccountBox final : public QComboBox {
    Q_OBJECT

public:
    explicit AccountBox(QWidget *parent);

    void setNames(const QStringList &names); // the choice stays, and what is being typed
    void setTitle(const QString &name); // chosen even where it is none of the names
    QString title() const { return _title; }
    // Chooses the name that is typed; false where there is none such.
    bool takeTyped();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QStringListModel *_model;
    QStringList _names; // without the one that is none of them
    QString _title;
};

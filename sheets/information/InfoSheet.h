#pragma once

#include "widgets/Sheet.h"

#include <QPointer>

#include <array>

class AccountBox;
class QCheckBox;
class QComboBox;
class QGridLayout;
class TextField;

// The sheet with everything about an item: its controls, and how they stand. Their names are their
// roles. Main thread.
class InfoSheet final : public Sheet {
    Q_OBJECT

public:
    explicit InfoSheet(QWidget *mainWindow);

    QLabel *Icon;
    TextField *Name;
    TextField *Type;
    TextField *FileSize;
    TextField *Path;
    TextField *Target;
    TextField *Created;
    TextField *Modified;
    QComboBox *OpenWith;
    AccountBox *Owner;
    QComboBox *OwnerPermissions;
    AccountBox *Group;
    QComboBox *GroupPermissions;
    QComboBox *Other;
    QPushButton *LockButton;
    QCheckBox *LockState;

    // Of the owner, the group and others, in this order.
    std::array<QComboBox *, 3> permissions() const
    {
        return { OwnerPermissions, GroupPermissions, Other };
    }

    void showIcon(const QIcon &icon);
    void showNameColor(const QColor &color); // invalid: as other texts
    // The padlock: whether rights are held, by whatever they were gained; and what a press of it
    // does.
    enum class Press { Gains, GivesUp };
    void showRights(bool held, Press press);
    void showNote(const QString &text); // what a person should know, in place of the last note

    // While it is busy it neither takes input nor goes.
    void setBusy(bool busy);
    bool isBusy() const { return _busy; }

    void reject() override;

Q_SIGNALS:
    void okClicked();

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    TextField *addField(const QString &name);
    QComboBox *newPermissions(const QString &name);
    void addRow(const QString &name, QWidget *control, QWidget *beside = nullptr);
    void addLine();
    void addHeader();
    void tintName();
    void drawLock(); // in the colours of now

    QGridLayout *_grid;
    QWidget *_content;
    QLabel *_note;
    QPushButton *_ok;
    QPushButton *_cancel;
    QPointer<QWidget> _focusBefore; // while it is busy
    QString _gain; // the padlock's texts, with their letters
    QString _giveUp;
    QColor _nameColor;
    bool _rightsHeld = false;
    bool _busy = false;
};

#pragma once

#include <QPushButton>

// A text that opens an address when it is clicked: a hand over it, a link's colour, and the
// keyboard's way to it.
class AddressField : public QPushButton {
    Q_OBJECT

protected:
    AddressField(const QString &text, const QString &address, QWidget *parent);

public:
    QString address() const { return _address; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QString _address;
};

// Opens a new message to the maker.
class MailTextField final : public AddressField {
    Q_OBJECT

public:
    MailTextField(const QString &mailAddress, QWidget *parent);
};

// Opens one of the maker's pages.
class WebTextField final : public AddressField {
    Q_OBJECT

public:
    WebTextField(const QString &webAddress, QWidget *parent);
};

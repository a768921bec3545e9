#pragma once

#include <QLabel>

// A text that is a link, for the mouse and for the keyboard; linkActivated() says its address.
class AddressField : public QLabel {
    Q_OBJECT

protected:
    AddressField(const QString &text, const QString &address, QWidget *parent);
};

// Leads to a new message to the maker.
class MailTextField final : public AddressField {
    Q_OBJECT

public:
    MailTextField(const QString &mailAddress, QWidget *parent);
};

// Leads to one of the maker's pages.
class WebTextField final : public AddressField {
    Q_OBJECT

public:
    WebTextField(const QString &webAddress, QWidget *parent);
};

#pragma once

#include "files/FileName.h"

#include <QTest>

using namespace Qt::StringLiterals; // in every test

// A temporary folder of real files, removed at the end. Names are relative to it and may hold any
// bytes (files/FileName); making something that cannot be made fails the test.
class TestFolder {
public:
    explicit TestFolder(const QByteArray &parent = {}); // the usual one for such things, or this
    ~TestFolder();
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;

    const QString &path() const { return _path; }
    QString path(const QString &name) const { return _path + u'/' + name; }
    QByteArray bytes(const QString &name) const; // its path for the system
    QByteArray pathInMountTable(const QString &name) const; // blanks escaped, see proc(5)

    void write(const QString &name, const QByteArray &bytes = {}) const;
    void makeFolder(const QString &name) const; // with the folders it lies in
    void link(const QString &target, const QString &name) const;
    void hardLink(const QString &existing, const QString &name) const;

    QByteArray read(const QString &name) const; // empty when there is no such file
    QStringList names(const QString &folder = {}) const; // sorted, hidden ones too

    // Runs a script of bash in the folder; a command of it that fails, in a pipe too, fails the
    // test.
    void shell(const QString &script) const;

    void setAttribute(const QString &name, const char *attribute, const QByteArray &value) const;
    void setFinderFlags(const QString &name, quint16 flags) const
    {
        setAttribute(name, "user.com.apple.FinderInfo", finderInfo(flags));
    }
    static QByteArray finderInfo(quint16 flags); // label, invisible, alias
    void setModified(const QString &name, time_t seconds) const;
    QByteArray attribute(const QString &name, const char *attribute) const;

private:
    QString _path;
};

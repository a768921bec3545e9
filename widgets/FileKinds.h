#pragma once

#include "files/FileStatus.h"

#include <QByteArrayView>
#include <QHash>
#include <QIcon>
#include <QMimeType>
#include <QString>

#include <mutex>

// What kind of thing an item is, by its name and file type alone: the text of the column "Type" and
// the icon. Kept per suffix, so a large folder costs a look-up per visible row. Texts on any
// thread, icons on the main thread.
class FileKinds {
public:
    FileKinds();

    // Folders whose name ends like this are one thing to a person: shown as a file, opened as a
    // whole.
    static bool isPackageName(QStringView name);
    // What alone decides about the kind of a regular file; empty where the whole name does.
    static QByteArrayView suffix(QByteArrayView name);

    // "Folder" (localized) exactly for folders that are no package; "--" when nothing is known.
    QString kindText(const QString &name, FileKind kind, bool dangling = false) const;
    // The same of a regular file by its content, too, which begins like this. Kept nowhere.
    static QString kindTextByContent(const QString &name, const QByteArray &start);
    // The theme's icon, or the program's own drawing of it where the theme has none.
    QIcon icon(const QString &name, FileKind kind, bool dangling = false) const;
    QIcon genericFolderIcon() const;
    QIcon genericDocumentIcon() const;

private:
    // The look-up by file type is what costs: made once for text and icon. Icons on demand.
    struct Known {
        QMimeType type;
        QString text;
        QIcon icon;
    };

    QString key(const QString &name, FileKind kind, bool dangling) const;
    Known &known(const QString &key) const; // under the lock, and valid as long
    QIcon iconOfKey(const QString &key) const;

    mutable std::mutex _mutex; // for _known
    mutable QHash<QString, Known> _known;
};

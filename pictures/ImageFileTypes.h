#pragma once

#include <QByteArrayView>
#include <QStringList>

// What can be shown as a picture, by what a file says of itself without being read: its type code,
// else the ending of its name. Made once; any thread.
class ImageFileTypes final {
public:
    ImageFileTypes(); // asks which kinds can be read on this machine

    // Endings in small letters, and codes of four characters in single quotes.
    const QStringList &types() const { return _types; }
    bool isFileImage(const QString &path) const;
    // `code`: its type code, empty for none.
    bool isImage(QByteArrayView code, const QString &name) const;

private:
    QStringList _types; // sorted
};

#pragma once

#include "files/FileName.h"
#include "files/PathText.h"
#include "search/DocumentWriter.h"
#include "search/IndexFile.h"
#include "search/IndexWriter.h"

#include <QHash>
#include <QTest>

#include <dirent.h>
#include <sys/stat.h>

// An index of the home folder, written as the indexer does it, from what really lies there.
class SmallIndex {
public:
    SmallIndex()
        : _index(IndexFile::path())
    {
        opened = _index.open() == IndexFile::State::Good;
        if (opened)
            _documents.emplace(_index);
        _ids[IndexFile::homePath()] = _index.addFolder(0, {}, 0);
        addItems(IndexFile::homePath());
    }

    bool opened = false;

    // In it as it is now; its folder was added before. "" is the home folder itself.
    void addFolder(const QString &name)
    {
        const QString path = pathOf(name);
        if (!name.isEmpty() && !_ids.contains(path))
            _ids[path] = _index.addFolder(_ids[PathText::parent(path)],
                                          FileName::toBytes(PathText::lastComponent(path)), 0);
        addItems(path);
    }
    void addDocument(const QString &name, const QList<MetadataAttribute> &attributes,
                     const QByteArray &text)
    {
        const QString path = pathOf(name);
        _documents->put({ .folder = _ids[PathText::parent(path)],
                          .name = FileName::toBytes(PathText::lastComponent(path)),
                          .stamp = stampOf(FileName::toBytes(path)),
                          .outcome = IndexFile::Outcome::Read,
                          .attributes = attributes,
                          .text = text });
    }
    void commit(bool whole, IndexFile::Pending pending = IndexFile::Pending::No)
    {
        for (const qint64 folder : std::as_const(_ids))
            _index.endPending(folder);
        addItems(IndexFile::homePath(), pending);
        _index.setNamesWhole(whole);
        QVERIFY(_index.commit());
    }

private:
    static QString pathOf(const QString &name)
    {
        return name.isEmpty() ? IndexFile::homePath() : IndexFile::homePath() + u'/' + name;
    }
    static PackedItem::Stamp stampOf(const QByteArray &path)
    {
        struct stat status { };
        ::lstat(path, &status);
        return PackedItem::stampOf(status);
    }
    void addItems(const QString &path, IndexFile::Pending pending = IndexFile::Pending::Unknown)
    {
        const QByteArray folder = FileName::toBytes(path);
        QByteArray items;
        DIR *opened = ::opendir(folder);
        QVERIFY(opened);
        while (const dirent *item = ::readdir(opened)) {
            const QByteArray name(item->d_name);
            if (name != "." && name != "..")
                appendPacked(items, { name, item->d_type, stampOf(folder + '/' + name) });
        }
        ::closedir(opened);
        _index.setItems(_ids[path], items, 0, pending);
    }

    IndexWriter _index;
    std::optional<DocumentWriter> _documents;
    QHash<QString, qint64> _ids;
};

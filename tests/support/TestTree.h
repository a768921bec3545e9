#pragma once

#include "files/FileStatus.h"
#include "tests/support/TestFolder.h"

// A tree of files in words: "a/b=content, folder/, link->target, hard link==file, locked=!content".
// A "~" at the start of a target is the test's folder. Names hold no ", ", "=" or "->".

inline void makeTree(const TestFolder &folder, const QString &words)
{
    const auto cut = [&](const QString &word, const QString &by) {
        const QString path = word.section(by, 0, 0);
        folder.makeFolder(path.section(u'/', 0, -2));
        return std::pair(path, word.section(by, 1));
    };
    for (const QString &word : words.split(u", "_s, Qt::SkipEmptyParts)) {
        if (word.endsWith(u'/')) {
            folder.makeFolder(word);
        } else if (word.contains(u"->"_s)) {
            auto [path, target] = cut(word, u"->"_s);
            folder.link(target.replace(u"~"_s, folder.path()), path);
        } else if (word.contains(u"=="_s)) {
            const auto [path, existing] = cut(word, u"=="_s);
            folder.hardLink(existing, path);
        } else {
            const auto [path, content] = cut(word, u"="_s);
            folder.write(path, content.toUtf8());
            if (content.startsWith(u'!'))
                folder.setAttribute(path, "user.twinleaf.locked", "1");
        }
    }
}

// The same words, sorted, of everything in some folders. Of folders only the empty ones inside.
inline QString treeOf(const TestFolder &folder, const QStringList &folders)
{
    QStringList words;
    for (const QString &at : folders) {
        for (const QString &name : folder.names(at)) {
            const QString path = at + u'/' + name;
            const auto status = fileStatus(folder.path(path), Links::NoFollow);
            if (const auto target = linkTarget(folder.path(path)))
                words += path + u"->"_s + QString(*target).replace(folder.path(), u"~"_s);
            else if (status->kind != FileKind::Directory)
                words += path + u'=' + QString::fromUtf8(folder.read(path));
            else if (folder.names(path).isEmpty())
                words += path + u'/';
            else
                words += treeOf(folder, { path });
        }
    }
    return words.join(u", "_s);
}

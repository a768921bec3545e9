#pragma once

#include "files/Descriptor.h"
#include "indexer/FolderScan.h"
#include "indexer/Watches.h"
#include "search/DocumentWriter.h"
#include "search/IndexWriter.h"
#include "search/WalkRules.h"

#include <functional>

// Brings the folders and names of the index in line with the disk, and has the folders watched. A
// folder that is not where it was is kept aside for a while (IndexFile::Nowhere): when it turns up
// elsewhere, all that is known of what is in it goes with it.
class Tree final {
public:
    Tree(IndexWriter &index, DocumentWriter &documents, Watches &watches, WalkRules rules);

    // Of all folders. `goOn` is asked after each; false ends it early, and it answers false. So it
    // does when there is no home folder.
    using GoOn = std::function<bool()>;
    bool refresh(const GoOn &goOn);
    // Of one folder, and of all that is new or came into it. False: ended early, or the home folder
    // is another now, which takes a refresh.
    bool update(qint64 folder, const GoOn &goOn);

    // A folder of the index, opened; closed when it is not there.
    Descriptor open(qint64 folder);
    // The home folder is the one that was walked.
    bool homeIsInPlace() const;

    // Removes a little of what is aside; false when there is nothing.
    bool removeSome();

private:
    // How far down what is known already is compared.
    enum class Depth { All, NewOnly };

    bool visit(int folder, qint64 id, bool isNew, Depth depth, const GoOn &goOn);
    bool visitSubfolder(int folder, qint64 id, const FolderScan::Subfolder &found,
                        const IndexWriter::Folder *known, const GoOn &goOn);
    std::optional<qint64> folderThatMoved(quint64 inode);
    bool chainOf(qint64 folder, QByteArrayList &names);
    void putAside(qint64 folder);

    IndexWriter &_index;
    DocumentWriter &_documents;
    Watches &_watches;
    WalkRules _rules;
    QByteArray _homePath;
    Descriptor _home;
    QByteArray _path; // of the folder that is visited
};

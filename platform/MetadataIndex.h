#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

// What is searched for. In `query` the text stands as it was typed, quotes included; so it is given
// beside it once more, and the two together can mean one thing only.
struct MetadataSearch {
    QString query; // * == "TEXT"cdw || kMDItemTextContent == "TEXT"cdw
    QString text;
};

// A property of an item by its well-known name ("kMDItemPixelWidth"). Numbers are qint64 or double,
// dates QDateTime; what may have several values is a QStringList.
struct MetadataAttribute {
    QString name;
    QVariant value;
};

// A running search of the home folder, live until it is destroyed: what it found so far, in the
// order of the display names, each item once. Main thread.
class MetadataQuery : public QObject {
    Q_OBJECT

public:
    struct Result {
        QString path;
        QString displayName;
    };

    virtual qsizetype resultCount() const = 0;
    // It stays the same, and where it is, between two signals.
    virtual const Result &resultAt(qsizetype index) const = 0;
    virtual qsizetype indexOf(const Result &result) const = 0; // -1: not found; quick among many
    // False as long as the index is not whole: there may be more than it knows.
    virtual bool isComplete() const = 0;
    // Whether more was found than is held.
    virtual bool isCut() const = 0;
    // Whether anybody looks at the results: unseen ones are not followed, and are brought up to
    // date when they are shown again. Shown at first.
    virtual void setShown(bool shown) = 0;

Q_SIGNALS:
    void queryProgress(); // more was found
    void queryDidFinish(); // all that is known was found, once
    void queryDidUpdate(); // the disk changed since, and so did the results
};

// The index of what lies in the home folder: names, properties and text. Main thread.
class MetadataIndex {
public:
    virtual ~MetadataIndex() = default;

    // Starts at once and answers later; never null.
    virtual std::unique_ptr<MetadataQuery> execute(const MetadataSearch &search) = 0;
    // What is known of an item, in a fixed order; empty when there is none. Looks at the disk: any
    // thread but the main one.
    virtual QList<MetadataAttribute> attributesOf(const QString &path) = 0;
};

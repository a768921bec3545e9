#pragma once

#include "platform/MetadataIndex.h"

#include <QPointer>

using namespace Qt::StringLiterals;

// Results that the test changes as it likes.
class ScriptedQuery final : public MetadataQuery {
    Q_OBJECT

public:
    qsizetype resultCount() const override { return results.size(); }
    const Result &resultAt(qsizetype index) const override
    {
        ++asked;
        return results[index];
    }
    qsizetype indexOf(const Result &result) const override
    {
        const auto isSame = [&](const Result &other) { return other.path == result.path; };
        const auto found = std::find_if(results.begin(), results.end(), isSame);
        return found == results.end() ? -1 : found - results.begin();
    }
    bool isComplete() const override { return complete; }
    bool isCut() const override { return cut; }
    void setShown(bool isShown) override { shown = isShown; }

    QList<Result> results;
    bool complete = true;
    bool cut = false;
    bool shown = true;
    mutable int asked = 0;
};

// Starts queries that find what the test puts into them.
class ScriptedMetadataIndex final : public MetadataIndex {
public:
    std::unique_ptr<MetadataQuery> execute(const MetadataSearch &search) override
    {
        searches.append(search);
        auto started = std::make_unique<ScriptedQuery>();
        query = started.get();
        return started;
    }
    QList<MetadataAttribute> attributesOf(const QString &path) override // worker thread
    {
        return { { u"kMDItemPath"_s, path },
                 { u"kMDItemComment"_s, u"two\nlines\tand\r a tab"_s },
                 { u"kMDItemNumberOfPages"_s, 12LL } };
    }

    QList<MetadataSearch> searches;
    QPointer<ScriptedQuery> query; // the last one that lives
};

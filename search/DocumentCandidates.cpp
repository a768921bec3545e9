#include "search/DocumentCandidates.h"

#include "search/TextMatch.h"

#include <QByteArrayList>
#include <QSet>

#include <algorithm>
#include <vector>

using DocumentCandidates::Certainty;
using DocumentCandidates::In;

namespace {

using Take = std::function<bool(qint64 document, Certainty certainty)>;

// A few tell most of the others apart; the rest is looked at in the value.
constexpr size_t MostWords = 12;
// A part that so many words have is in most documents.
constexpr qsizetype MostTerms = 2000;
constexpr qsizetype TermsAtOnce = 200;

struct Tables {
    const char *match;
    const char *each; // document that has a value there
    const char *vocabulary;
    const char *terms;
};

constexpr Tables TablesOf[] {
    { "SELECT rowid FROM property_words WHERE property_words MATCH ?",
      "SELECT id FROM document WHERE attributes IS NOT NULL",
      "CREATE VIRTUAL TABLE IF NOT EXISTS temp.property_terms"
      " USING fts5vocab(main, property_words, row)",
      "SELECT term FROM temp.property_terms WHERE instr(term, ?1) OR length(CAST(term AS BLOB)) > "
      "?2" },
    { "SELECT rowid FROM content_words WHERE content_words MATCH ?",
      "SELECT id FROM document WHERE text IS NOT NULL",
      "CREATE VIRTUAL TABLE IF NOT EXISTS temp.content_terms"
      " USING fts5vocab(main, content_words, row)",
      "SELECT term FROM temp.content_terms WHERE instr(term, ?1) OR length(CAST(term AS BLOB)) > "
      "?2" },
};

// Words have no quotes, and inside of quotes nothing is an operator.
QByteArray quoted(QByteArrayView word)
{
    return '"' + Folding::indexedWord(word).toByteArray() + '"';
}

std::vector<QByteArrayView> wordsOf(QByteArrayView folded)
{
    std::vector<QByteArrayView> found;
    QByteArrayView word;
    for (Folding::Words words(folded); words.next(word);)
        found.push_back(word);
    return found;
}

// All of them, the last by its beginning.
QByteArray expressionOf(const std::vector<QByteArrayView> &words)
{
    std::vector<QByteArrayView> whole(words.begin(), words.end() - 1);
    std::ranges::sort(whole);
    whole.erase(std::unique(whole.begin(), whole.end()), whole.end());
    std::ranges::stable_sort(whole, std::ranges::greater(), &QByteArrayView::size);
    whole.resize(std::min(whole.size(), MostWords));
    QByteArray expression = quoted(words.back()) + " *";
    for (const QByteArrayView word : whole)
        expression += " AND " + quoted(word);
    return expression;
}

void eachMatch(Database &database, const Tables &tables, const QByteArray &expression,
               Certainty certainty, const Take &take)
{
    Statement matches(database, tables.match);
    matches.bindText(1, expression);
    while (matches.next()) {
        if (!take(matches.number(0), certainty))
            break;
    }
}

void eachDocument(Database &database, const Tables &tables, const Take &take)
{
    Statement documents(database, tables.each);
    while (documents.next()) {
        if (!take(documents.number(0), Certainty::May))
            break;
    }
}

// The words of the index that hold the part, and those of which the index has the beginning only.
QByteArrayList termsWith(Database &database, const Tables &tables, QByteArrayView part)
{
    constexpr qint64 LongestCharacter = 4;
    QByteArrayList terms;
    if (!database.run(tables.vocabulary))
        return terms;
    Statement found(database, tables.terms);
    found.bindText(1, part).bind(2, Folding::LongestIndexedWord - LongestCharacter);
    while (terms.size() <= MostTerms && found.next())
        terms.append(found.bytes(0).toByteArray());
    return terms;
}

void eachWithPart(Database &database, const Tables &tables, QByteArrayView part, const Take &take)
{
    const QByteArrayList terms = termsWith(database, tables, part);
    if (terms.size() > MostTerms) {
        eachDocument(database, tables, take);
        return;
    }
    QSet<qint64> taken;
    bool goesOn = true;
    for (qsizetype from = 0; goesOn && from < terms.size(); from += TermsAtOnce) {
        QByteArrayList quotedTerms;
        for (const QByteArray &term : terms.mid(from, TermsAtOnce))
            quotedTerms.append('"' + term + '"');
        eachMatch(database, tables, quotedTerms.join(" OR "), Certainty::May,
                  [&](qint64 document, Certainty certainty) {
                      if (!taken.contains(document)) {
                          taken.insert(document);
                          goesOn = take(document, certainty);
                      }
                      return goesOn;
                  });
    }
}

} // namespace

void eachCandidate(Database &database, const QueryText &query, In in, const Take &take)
{
    const Tables &tables = TablesOf[int(in)];
    // As the index has it, whatever the query folds: what is the same there is the same here.
    const QByteArray folded = Folding::folded(query.text, Folding::All);
    const std::vector<QByteArrayView> words = wordsOf(folded);
    if (words.empty()) {
        eachDocument(database, tables, take);
        return;
    }
    if (!query.words) {
        eachWithPart(database, tables, *std::ranges::max_element(words, {}, &QByteArrayView::size),
                     take);
        return;
    }
    const bool tellsAll = words.size() == 1 && query.steps == Folding::All
        && words.front().size() <= Folding::LongestIndexedWord;
    eachMatch(database, tables, expressionOf(words), tellsAll ? Certainty::Is : Certainty::May,
              take);
}

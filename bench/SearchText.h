#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

// Text as people write it, made up: a few words are in every sentence and short, most are rare,
// some have accents, and what a text is about comes again and again in it. The same for the same
// number, everywhere.
class SearchText {
public:
    static constexpr int Words = 100000;

    explicit SearchText(uint64_t number)
        : _state(number * 0x9E3779B97F4A7C15U + 1)
    {
    }

    // Whole words, at least so many bytes of them.
    std::string bytes(size_t size)
    {
        std::string text;
        text.reserve(size + 16);
        for (int inSentence = 0; text.size() < size; ++inSentence) {
            // The logarithm of the rank is spread evenly: the rank follows Zipf's law.
            auto rank = size_t(std::exp(fraction() * std::log(double(Words)))) % Words;
            if (!_said.empty() && fraction() < Repeated)
                rank = _said[next() % _said.size()];
            _said.push_back(rank);
            std::string word = vocabulary()[rank];
            if (inSentence == 0)
                word[0] = char(word[0] >= 'a' && word[0] <= 'z' ? word[0] - 'a' + 'A' : word[0]);
            text += word;
            if (inSentence == 12) {
                text += ".\n";
                inSentence = -1;
            } else
                text += ' ';
        }
        return text;
    }

private:
    uint64_t next()
    {
        _state ^= _state << 13;
        _state ^= _state >> 7;
        _state ^= _state << 17;
        return _state;
    }
    double fraction() { return double(next() >> 11) / double(uint64_t(1) << 53); }

    static const std::vector<std::string> &vocabulary()
    {
        static const std::vector<std::string> words = [] {
            static const char *const syllables[] = { "ba", "ko",  "ri",        "ten", "sa", "lu",
                                                     "mi", "da",  "ner",       "ge",  "so", "va",
                                                     "ti", "on",  "pra",       "le",  "ha", "is",
                                                     "ma", "che", "r\xC3\xBC", "fo",  "na", "est" };
            std::vector<std::string> made;
            SearchText random(1);
            for (int rank = 0; rank < Words; ++rank) {
                std::string word;
                // What is said often is short.
                const int length =
                    1 + int(std::log10(double(rank + 1)) / 2 + random.fraction() * 3);
                for (int part = 0; part < length; ++part)
                    word += syllables[random.next() % std::size(syllables)];
                made.push_back(word);
            }
            return made;
        }();
        return words;
    }

    static constexpr double Repeated = 0.4; // of the words

    uint64_t _state;
    std::vector<size_t> _said;
};

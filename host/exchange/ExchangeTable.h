#ifndef Orrelin_host_exchange_ExchangeTable_h
#define Orrelin_host_exchange_ExchangeTable_h

#include <cstdint>
#include <string>
#include <vector>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* The texts that go to translators and come back in a format of their tools.
   Writers and readers of such formats know nothing of the project. */

enum class TargetState : std::uint8_t {
    /* The format doesn't say */
    Unknown,
    NeedsTranslation,
    /* Outdated, or a guess of a tool */
    NeedsReview,
    Translated
};

struct ExchangeTarget {
    /* Empty if there is no translation */
    Containers::String text;
    TargetState state = TargetState::Unknown;
    /* The source of an outdated translation, if it's known */
    Containers::String before;
};

struct ExchangeText {
    Containers::String key;
    Containers::String source;
    /* Name of the object, and path in the project */
    Containers::String object;
    Containers::String place;
    /* As it came back: the marks of what was handed out, and where it is in the
       file */
    Containers::String marks;
    std::size_t line = 0;
};

struct ExchangeLanguage {
    Containers::String code;
    /* Of each text */
    std::vector<ExchangeTarget> targets;
};

struct ExchangeTable {
    /* Language of the sources */
    Containers::String sourceCode;
    std::vector<ExchangeText> texts;
    std::vector<ExchangeLanguage> languages;
    /* What can't be taken, each with its line */
    std::vector<Containers::String> faults;
};

/* A text that was handed out is marked in the file, by eight letters that depend
   on its key and language, too. So it's known who changed it. Letters alone,
   as spreadsheets turn many other words into numbers. */
class Marks {
public:
    explicit Marks(Containers::StringView key);

    void append(std::string& out, Containers::StringView code,
        Containers::StringView text) const;

    /* Whether a list, with spaces in between, has the mark of a text */
    bool areIn(Containers::StringView list, Containers::StringView code,
        Containers::StringView text) const;

private:
    std::uint64_t _key;
};

/* Adds what is known of an outdated translation, for the translator */
void appendNote(std::string& out, const ExchangeTarget& target);

/* Counts lines of a file, for places that come in their order */
class LineCounter {
public:
    explicit LineCounter(Containers::StringView content): _content{content} {}

    /* Of the byte, from 1 on */
    std::size_t lineOf(std::size_t offset);

private:
    Containers::StringView _content;
    std::size_t _offset = 0;
    std::size_t _line = 1;
};

/* Why the content isn't a text, with the line; empty if it is */
Containers::String textFault(Containers::StringView content);

/* Without a byte order mark */
Containers::StringView withoutByteOrderMark(Containers::StringView content);

}}

#endif

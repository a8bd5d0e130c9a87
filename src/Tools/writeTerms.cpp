#include <cstring>
#include <vector>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/JsonWriter.h>

#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/StoredTerms.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* A term that goes into the files */
struct Term {
    Containers::StringView key;
    /* Its text, in the document */
    Containers::StringView source;
};

std::vector<Term> translatedTerms(const OrrelinEditor& editor) {
    std::vector<Term> out;
    out.reserve(editor.localization->terms.size());
    StoredTerms storedTerms{editor};
    for(const auto& term: editor.localization->terms) {
        const StoredTerm stored = storedTerms.find(term.second);
        if(stored.translated)
            out.push_back({term.first, stored.text()});
    }
    return out;
}

void writeSources(Utility::JsonWriter& writer, const std::vector<Term>& terms) {
    for(const Term& term: terms)
        writer.writeKey(term.key).write(term.source);
}

void writeTranslations(Utility::JsonWriter& writer,
    const std::vector<Term>& terms, const TranslationMap& translations) {
    /* Both are in the same order, so no term has to be searched for */
    auto next = translations.begin();
    for(const Term& term: terms) {
        while(next != translations.end() && StrLess{}(next->first, term.key))
            ++next;
        writer.writeKey(term.key);
        if(next == translations.end() || next->first != term.key) {
            writer.write(nullptr);
            continue;
        }
        if(next->second)
            writer.write(*next->second);
        else
            writer.write(nullptr);
        ++next;
    }
}

/* Corrade's own writer leaves most control characters as they are, which isn't
   JSON. Line breaks stay: the writer escapes those in texts, the others are its
   own. */
Containers::Array<char> withEscapedControls(Containers::StringView json) {
    const auto isControl = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\n';
    };
    std::size_t controls = 0;
    for(const char c: json)
        controls += isControl(c);

    Containers::Array<char> out{Corrade::NoInit, json.size() + controls * 5};
    if(!controls) {
        std::memcpy(out.data(), json.data(), json.size());
        return out;
    }
    char* o = out.data();
    for(const char c: json) {
        if(isControl(c)) {
            const char* const digits = "0123456789abcdef";
            for(const char e:
                {'\\', 'u', '0', '0', digits[c >> 4], digits[c & 0xf]})
                *o++ = e;
        } else
            *o++ = c;
    }
    return out;
}

}

void writeTerms(OrrelinEditor& editor,
    const Containers::StringIterable& languages, LocalizationFormat format,
    Containers::Array<Containers::String>& fileNames,
    Containers::Array<Containers::Array<char>>& fileContents) {
    const ValueAccess defaultLanguage =
        editor.project["settings/localization/defaultLanguage"];
    if(format != LocalizationFormat::I18next)
        return;

    const Containers::String defaultCode{defaultLanguage.asString()};
    const std::vector<Term> terms = translatedTerms(editor);

    const LanguageTranslations& all = editor.localization->translations;
    const TranslationMap none;
    for(const Containers::StringView code: languages) {
        const auto found = all.find(code);
        Utility::JsonWriter writer{Utility::JsonWriter::Option::Wrap |
                Utility::JsonWriter::Option::TypographicalSpace,
            2, 0};
        writer.beginObject().writeKey("translation").beginObject();
        if(code == defaultCode)
            writeSources(writer, terms);
        else
            writeTranslations(
                writer, terms, found == all.end() ? none : found->second);
        writer.endObject().endObject();

        arrayAppend(fileContents, withEscapedControls(writer.toString()));
        arrayAppend(fileNames, Utility::format("{}.json", code));
    }
}

}}

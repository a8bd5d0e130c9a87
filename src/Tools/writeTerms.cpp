#include <vector>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/JsonWriter.h>

#include "Tools/LocalizationTools.h"
#include "Tools/isTranslated.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* A term that goes into the files */
struct Term {
    Containers::StringView key;
    /* Its text, in the document; looked up only if a file needs it */
    Containers::StringView source;
};

std::vector<Term> translatedTerms(const OrrelinEditor& editor,
    bool withSources) {
    std::vector<Term> out;
    out.reserve(editor.localization->terms.size());
    for(const auto& term: editor.localization->terms) {
        if(!isTranslated(editor, term.second))
            continue;
        out.push_back({term.first, {}});
        if(!withSources)
            continue;
        const ValueAccess value = editor.project[term.second];
        if(value.hasValue())
            out.back().source = value.asString();
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
    auto translation = translations.begin();
    for(const Term& term: terms) {
        while(translation != translations.end() &&
            StrLess{}(translation->first, term.key))
            ++translation;
        writer.writeKey(term.key);
        if(translation != translations.end() &&
            translation->first == term.key && translation->second)
            writer.write(*translation->second);
        else
            writer.write(nullptr);
    }
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
    bool withSources = false;
    for(const Containers::StringView code: languages)
        withSources = withSources || code == defaultCode;
    const std::vector<Term> terms = translatedTerms(editor, withSources);

    const LanguageTranslations& all = editor.localization->translations;
    const TranslationMap none;
    for(const Containers::StringView code: languages) {
        const auto found = all.find(code);
        Utility::JsonWriter writer{
            Utility::JsonWriter::Option::Wrap |
                Utility::JsonWriter::Option::TypographicalSpace,
            2, 0};
        writer.beginObject().writeKey("translation").beginObject();
        if(code == defaultCode)
            writeSources(writer, terms);
        else
            writeTranslations(writer, terms,
                found == all.end() ? none : found->second);
        writer.endObject().endObject();

        const Containers::StringView text = writer.toString();
        arrayAppend(fileContents,
            Containers::Array<char>{Corrade::InPlaceInit,
                Containers::ArrayView<const char>{text.data(), text.size()}});
        arrayAppend(fileNames, Utility::format("{}.json", code));
    }
}

}}

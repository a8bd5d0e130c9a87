#include <utility>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "Tools/storedTerm.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* Searching so few members takes less than looking one up by its path */
constexpr rapidjson::SizeType FewMembers = 32;

/* The object that a value and its flag are members of, if it's faster to
   search it itself. In a path, names with a tilde are escaped. */
const JsonValue* smallRecord(
    const OrrelinEditor& editor, Containers::StringView path) {
    const Containers::StringView slash = path.findLast('/');
    if(!slash || slash.begin() == path.begin() ||
        path.suffix(slash.end()).contains('~'))
        return nullptr;
    const JsonValue* const record =
        editor.project[path.prefix(slash.begin())].readValueNoDefault();
    return record && record->IsObject() && record->MemberCount() <= FewMembers
        ? record
        : nullptr;
}

const JsonValue* member(const JsonValue& record, Containers::StringView name) {
    const auto found = record.FindMember(JsonValue{
        rapidjson::StringRef(name.data(), rapidjson::SizeType(name.size()))});
    return found == record.MemberEnd() ? nullptr : &found->value;
}

void renameTranslation(TranslationMap& translations,
    Containers::StringView oldName, Containers::StringView newName) {
    const auto found = translations.find(oldName);
    if(found == translations.end())
        return;
    translations.emplace(newName, std::move(found->second));
    translations.erase(found);
}

}

Containers::StringView StoredTerm::text() const {
    return value && value->IsString()
        ? Containers::StringView{value->GetString(), value->GetStringLength()}
        : Containers::StringView{};
}

StoredTerm storedTerm(
    const OrrelinEditor& editor, Containers::StringView path) {
    if(const JsonValue* const record = smallRecord(editor, path)) {
        const Containers::StringView name =
            path.suffix(path.findLast('/').end());
        const JsonValue* const flag = member(*record, name + "_translate");
        return {member(*record, name), !flag || flag->IsTrue()};
    }

    const ValueAccess flag = editor.project[path + "_translate"];
    return {editor.project[path].readValueNoDefault(),
        !flag.hasValue() || flag.asBool()};
}

bool termExists(OrrelinEditor& editor, Containers::StringView term) {
    const TermPathMap& terms = editor.localization->terms;
    const auto found = terms.find(term);
    return found != terms.end() && storedTerm(editor, found->second).translated;
}

void renameTerm(OrrelinEditor& editor, Containers::StringView oldName,
    Containers::StringView newName, TermMap& strings) {
    if(newName == oldName)
        return;

    /* Either name may be a view of a key that's about to be erased */
    const Containers::String from{oldName};
    const Containers::String to{newName};
    for(auto& language: editor.localization->translations)
        renameTranslation(language.second, from, to);

    TermPathMap& terms = editor.localization->terms;
    const auto found = terms.find(from);
    if(found == terms.end())
        return;
    strings[found->second] = to;
    terms.emplace(to, std::move(found->second));
    terms.erase(found);
}

}}

#include "Tools/Implementation/StoredTerms.h"

#include <charconv>
#include <rapidjson/document.h>

#include "editor/OrrelinEditor.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* Splits off the last segment, together with the slash before it */
Containers::StringView splitLast(Containers::StringView& path) {
    const char* const slash = path.findLastOr('/', path.begin()).begin();
    const Containers::StringView out = path.suffix(slash);
    path = path.prefix(slash);
    return out;
}

const JsonValue* element(
    const JsonValue& array, Containers::StringView segment) {
    rapidjson::SizeType index = 0;
    const auto parsed = std::from_chars(segment.begin(), segment.end(), index);
    const bool isIndex = parsed.ec == std::errc{} &&
        parsed.ptr == segment.end() &&
        (segment.size() == 1 || segment[0] != '0');
    return isIndex && index < array.Size() ? &array[index] : nullptr;
}

}

Containers::StringView StoredTerm::text() const {
    return value ? stringOf(*value) : Containers::StringView{};
}

StoredTerms::StoredTerms(const OrrelinEditor& editor):
    _editor(editor), _root{editor.project.readValueNoDefault()} {}

const JsonValue* StoredTerms::member(
    const JsonValue& object, Containers::StringView name) {
    if(object.MemberCount() <= StoredMembers::Few)
        return StoredMembers{&object}.find(name);
    return _members.try_emplace(&object, &object).first->second.find(name);
}

const JsonValue* StoredTerms::child(
    const JsonValue& parent, Containers::StringView segment) {
    if(parent.IsArray())
        return element(parent, segment);
    if(!parent.IsObject())
        return nullptr;
    return segment.contains('~') ? member(parent, RecordPath::name(segment))
                                 : member(parent, segment);
}

Containers::StringView StoredTerms::descend(
    const JsonValue*& value, Containers::StringView path) {
    while(value && !path.isEmpty()) {
        const Containers::StringView rest = path.exceptPrefix(1);
        const char* const end = rest.findOr('/', rest.end()).begin();
        const JsonValue* const found = child(*value, rest.prefix(end));
        if(!found)
            break;
        value = found;
        path = rest.suffix(end);
    }
    return path;
}

const JsonValue* StoredTerms::record(Containers::StringView path) {
    /* All but the project's name are at "<components>/<index>/<type>" */
    Containers::StringView componentsPath = path;
    splitLast(componentsPath);
    splitLast(componentsPath);
    if(componentsPath != _componentsPath) {
        _components = _root;
        if(!descend(_components, componentsPath).isEmpty())
            _components = nullptr;
        _componentsPath = componentsPath;
    }
    const JsonValue* out = _components;
    return descend(out, path.suffix(componentsPath.end())).isEmpty() ? out
                                                                     : nullptr;
}

StoredTerm StoredTerms::find(Containers::StringView path) {
    StoredTerm out;
    const JsonValue* flag = nullptr;
    if(!path.hasPrefix('/')) {
        out.value = _editor.project[path].readValueNoDefault();
        flag = _editor.project[path + "_translate"].readValueNoDefault();
    } else {
        Containers::StringView recordPath = path;
        const Containers::StringView segment =
            splitLast(recordPath).exceptPrefix(1);
        if(const JsonValue* const values = record(recordPath)) {
            out.value = child(*values, segment);
            flag = child(*values, segment + "_translate");
        }
    }
    out.translated = !flag || flag->IsTrue();
    return out;
}

}}

#include "Tools/Implementation/StoredTerms.h"

#include <charconv>
#include <cstring>
#include <rapidjson/document.h>

#include "editor/OrrelinEditor.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

using namespace Containers::Literals;

constexpr Containers::StringView FlagEnd = "_translate"_s;

/* Above that, an index is faster than a search */
constexpr std::uint32_t LargeRecord = 32;

/* Splits off the last segment, together with the slash before it. A loop, as
   the segments are too short for a search to be worth a call. */
Containers::StringView splitLast(Containers::StringView& path) {
    const char* slash = path.end();
    while(slash != path.begin() && *--slash != '/') {
    }
    const Containers::StringView out = path.suffix(slash);
    path = path.prefix(slash);
    return out;
}

bool isSmallRecord(const JsonValue& value) {
    return value.IsObject() && value.MemberCount() <= LargeRecord;
}

bool isSame(const char* name, Containers::StringView expected) {
    return expected.isEmpty() ||
        std::memcmp(name, expected.data(), expected.size()) == 0;
}

/* Finds both members at once */
void search(const JsonValue& record, Containers::StringView name,
    const JsonValue*& value, const JsonValue*& flag) {
    for(auto i = record.MemberBegin(); i != record.MemberEnd(); ++i) {
        const std::size_t size = i->name.GetStringLength();
        const bool isFlag = size == name.size() + FlagEnd.size();
        if(size != name.size() && !isFlag)
            continue;
        /* Of several with one name, the first counts */
        const JsonValue*& out = isFlag ? flag : value;
        const char* const text = i->name.GetString();
        if(!out && isSame(text, name) &&
            (!isFlag || isSame(text + name.size(), FlagEnd)))
            out = &i->value;
    }
}

}

Containers::StringView StoredTerm::text() const {
    return value ? stringOf(*value) : Containers::StringView{};
}

/* The index can edit documents and so takes them without const, but looking up
   doesn't change them */
StoredTerms::StoredTerms(const OrrelinEditor& editor):
    _editor(editor), _root{const_cast<JsonValue*>(
                         editor.project.readValueNoDefault())} {}

/* Usual segments are looked up right here, as walking a pointer would take
   longer than that. All others are left to the index. */
JsonValue* StoredTerms::child(
    JsonValue& parent, Containers::StringView segment) {
    /* As in a path of fewer segments */
    if(segment.isEmpty())
        return &parent;
    const Containers::StringView name = segment.exceptPrefix(1);
    if(parent.IsArray()) {
        std::uint32_t i = 0;
        const std::from_chars_result result =
            std::from_chars(name.begin(), name.end(), i);
        if(result.ec == std::errc{} && result.ptr == name.end() &&
            (name.size() == 1 || name[0] != '0') && i < parent.Size())
            return &parent[i];
    } else if(isSmallRecord(parent) && !segment.contains('~')) {
        const std::uint32_t i = searchMember(parent, name);
        return i == parent.MemberCount()
            ? nullptr
            : &(parent.MemberBegin() + std::ptrdiff_t(i))->value;
    }
    return _index.find(parent, segment);
}

JsonValue* StoredTerms::record(Containers::StringView path) {
    /* The path is "<components>/<index>/<type>". The record of the project's
       name has two segments, so its way begins at the root. */
    Containers::StringView componentsPath = path;
    const Containers::StringView type = splitLast(componentsPath);
    const Containers::StringView index = splitLast(componentsPath);
    if(componentsPath != _componentsPath) {
        _components = _root ? _index.find(*_root, componentsPath) : nullptr;
        _componentsPath = componentsPath;
    }
    JsonValue* const component =
        _components ? child(*_components, index) : nullptr;
    return component ? child(*component, type) : nullptr;
}

StoredTerm StoredTerms::find(Containers::StringView path) {
    StoredTerm out;
    const JsonValue* flag = nullptr;
    if(!path.hasPrefix('/')) {
        out.value = _editor.project[path].readValueNoDefault();
        flag = _editor.project[path + FlagEnd].readValueNoDefault();
    } else {
        Containers::StringView recordPath = path;
        const Containers::StringView segment = splitLast(recordPath);
        JsonValue* const values = record(recordPath);
        if(values && isSmallRecord(*values) && !segment.contains('~'))
            search(*values, segment.exceptPrefix(1), out.value, flag);
        else if(values) {
            out.value = _index.find(*values, segment);
            flag = _index.find(*values, segment + FlagEnd);
        }
    }
    out.translated = !flag || flag->IsTrue();
    return out;
}

}}

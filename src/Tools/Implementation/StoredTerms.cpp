#include "Tools/Implementation/StoredTerms.h"

#include <rapidjson/document.h>

#include "editor/OrrelinEditor.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* Splits off the last segment, together with the slash before it */
Containers::StringView splitLast(Containers::StringView& path) {
    const char* const slash = path.findLastOr('/', path.begin()).begin();
    const Containers::StringView out = path.suffix(slash);
    path = path.prefix(slash);
    return out;
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

JsonValue* StoredTerms::record(Containers::StringView path) {
    /* The path is "<components>/<index>/<type>". The record of the project's
       name has two segments, so its way begins at the root. */
    Containers::StringView componentsPath = path;
    splitLast(componentsPath);
    splitLast(componentsPath);
    if(componentsPath != _componentsPath) {
        _components = _root ? _index.find(*_root, componentsPath) : nullptr;
        _componentsPath = componentsPath;
    }
    return _components
        ? _index.find(*_components, path.suffix(componentsPath.end()))
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
        const Containers::StringView segment = splitLast(recordPath);
        if(JsonValue* const values = record(recordPath)) {
            out.value = _index.find(*values, segment);
            flag = _index.find(*values, segment + "_translate");
        }
    }
    out.translated = !flag || flag->IsTrue();
    return out;
}

}}

#include "editor/RecordAccessKeys.h"

#include <algorithm>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

#include "shared/RecordPath.h"

namespace OrrelinEngine {

namespace {

Containers::StringView nameAt(const JsonValue& record, std::uint32_t position) {
    const JsonValue& name =
        (record.MemberBegin() + std::ptrdiff_t(position))->name;
    return {name.GetString(), name.GetStringLength(),
        Containers::StringViewFlag::NullTerminated};
}

}

RecordAccessKeys::RecordAccessKeys(const JsonValue& record):
    _record{&record}, _count{record.IsObject() ? record.MemberCount() : 0} {
    for(std::uint32_t i = 0; i != _count; ++i) {
        const Containers::StringView name = nameAt(record, i);
        if(RecordPath::needsEscape(name))
            arrayAppend(
                _escaped, Corrade::InPlaceInit, i, RecordPath::segment(name));
    }
}

Containers::StringView KeyIterator::operator*() const {
    const auto& escaped = _source->_escaped;
    const auto found =
        std::lower_bound(escaped.begin(), escaped.end(), _position,
            [](const Containers::Pair<std::uint32_t, Containers::String>& entry,
                std::uint32_t position) { return entry.first() < position; });
    if(found != escaped.end() && found->first() == _position)
        return found->second();
    return nameAt(*_source->_record, _position);
}

}

#include "editor/RecordAccessKeys.h"

#include <cstddef>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

#include "shared/RecordPath.h"

namespace OrrelinEngine {

RecordAccessKeys::RecordAccessKeys(const JsonValue& record):
    _record{&record}, _count{record.IsObject() ? record.MemberCount() : 0} {}

Containers::StringView KeyIterator::operator*() const {
    const JsonValue& member =
        (_record->MemberBegin() + std::ptrdiff_t(_position))->name;
    const Containers::StringView name{member.GetString(),
        member.GetStringLength(), Containers::StringViewFlag::NullTerminated};
    if(!RecordPath::needsEscape(name))
        return name;
    /* Made once only, as views of it may be in use */
    if(_escaped.isEmpty())
        _escaped = RecordPath::segment(name);
    return _escaped;
}

}

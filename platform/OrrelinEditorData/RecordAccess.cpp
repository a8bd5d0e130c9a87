#include "editor/RecordAccess.h"

#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>

#include "editor/ProjectFile.h"
#include "editor/RapidJsonUtils.h"

namespace OrrelinEngine {

namespace {

/* The part of the editor's schema of project settings that has defaults */
JsonValue& settingsSchema() {
    static JsonDocument schema = [] {
        JsonDocument out;
        out.Parse(R"({"settings": {"localization": {
            "languagesFolder": "languages",
            "format": "i18next",
            "enableZipCompression": false
        }}})");
        return out;
    }();
    return schema;
}

/* Only settings are in the schema. The search, member by member, is spared for
   all other paths. */
const JsonValue* schemaValue(Containers::StringView path) {
    return path.hasPrefix("/settings")
        ? RapidJsonUtils::valueByPointer(settingsSchema(), path)
        : nullptr;
}

Containers::String childPath(
    Containers::StringView path, Containers::StringView segments) {
    Containers::String out{Corrade::NoInit, path.size() + 1 + segments.size()};
    char* o = out.data();
    if(!path.isEmpty())
        std::memcpy(o, path.data(), path.size());
    o[path.size()] = '/';
    if(!segments.isEmpty())
        std::memcpy(o + path.size() + 1, segments.data(), segments.size());
    return out;
}

}

RecordAccess::RecordAccess(ProjectFile& file, Containers::String&& place):
    _file{&file}, path{std::move(place)} {}

RecordAccess::~RecordAccess() = default;

const JsonValue* RecordAccess::resolve(unsigned int sources) const {
    _schema = _default = nullptr;
    if((_stored = _file->find(path)) || sources == 1)
        return _stored;
    if((_schema = schemaValue(path)))
        return _schema;
    if(_file->_defaults)
        /* Nothing is written through the pointer */
        _default = RapidJsonUtils::valueByPointer(
            const_cast<JsonValue&>(*_file->_defaults), path);
    return _default;
}

bool RecordAccess::exists() const {
    return resolve(3);
}

ValueAccess RecordAccess::subValue(Containers::StringView key) {
    return operator[](key);
}

JsonAllocator& RecordAccess::allocator() const {
    return _file->document.GetAllocator();
}

const JsonValue& RecordAccess::readValue() const {
    static const JsonValue null;
    const JsonValue* const value = resolve(3);
    return value ? *value : null;
}

JsonValue& RecordAccess::writeValue() {
    return _file->create(path);
}

ValueAccess RecordAccess::subValue(Containers::StringView key) const {
    return operator[](key);
}

ValueAccess RecordAccess::operator[](Containers::StringView key) const {
    return ValueAccess{*_file,
        childPath(path, key.hasPrefix('/') ? key.exceptPrefix(1) : key)};
}

ValueAccess RecordAccess::operator[](unsigned int index) const {
    /* Not by Utility::format(), which is slow for a call per array element */
    char digits[std::numeric_limits<unsigned int>::digits10 + 1];
    char* const end =
        std::to_chars(std::begin(digits), std::end(digits), index).ptr;
    return ValueAccess{
        *_file, childPath(path, {digits, std::size_t(end - digits)})};
}

RecordAccessKeys RecordAccess::keys() const {
    return RecordAccessKeys{readValue()};
}

const JsonValue* RecordAccess::readValueNoDefault() const {
    return resolve(1);
}

bool RecordAccess::hasValue() const {
    return resolve(1);
}

}

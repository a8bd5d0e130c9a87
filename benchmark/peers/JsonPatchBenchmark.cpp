/* JSON Patches of nlohmann-json, each kept with its reverse */

#include <nlohmann/json.hpp>

#include "Edits.h"

namespace OrrelinEngine { namespace {

class JsonPatchSystem {
public:
    struct Path {
        std::string text;
        nlohmann::json::json_pointer pointer;
    };
    static Path path(const std::string& pointer) {
        return {pointer, nlohmann::json::json_pointer{pointer}};
    }

    typedef nlohmann::json Value;
    static Value value(const std::string& json) {
        return nlohmann::json::parse(json);
    }

    explicit JsonPatchSystem(const std::string& json):
        _document(nlohmann::json::parse(json)) {}

    void push(const Path& path, const Value* value) {
        _history.resize(_size);
        const bool exists = _document.contains(path.pointer);
        if(!exists && !value)
            return;
        _history.push_back({path.text,
            nlohmann::json::array({operation(
                path, exists ? value ? "replace" : "remove" : "add", value)}),
            nlohmann::json::array(
                {exists ? operation(path, value ? "replace" : "add",
                              &_document[path.pointer])
                        : operation(path, "remove", nullptr)}),
            _group});
        ++_size;
        _document.patch_inplace(_history.back().redo);
    }

    void drag(const Path& path, const Value& value) {
        if(!_size || _history[_size - 1].path != path.text ||
            _history[_size - 1].group != _group)
            return push(path, &value);
        _history.back().redo[0]["value"] = value;
        _document.patch_inplace(_history.back().redo);
    }

    void beginGroup() { _group = ++_groups; }
    void commit() { _group = -1; }

    void undo() {
        const int group = _history[_size - 1].group;
        do
            _document.patch_inplace(_history[--_size].undo);
        while(_size && group != -1 && _history[_size - 1].group == group);
    }

    void redo() {
        const int group = _history[_size].group;
        do
            _document.patch_inplace(_history[_size++].redo);
        while(_size != _history.size() && group != -1 &&
            _history[_size].group == group);
    }

    std::string json() const { return _document.dump(); }

private:
    struct Step {
        std::string path;
        nlohmann::json redo, undo;
        int group;
    };

    static nlohmann::json operation(
        const Path& path, const char* name, const nlohmann::json* value) {
        nlohmann::json out = {{"op", name}, {"path", path.text}};
        if(value)
            out["value"] = *value;
        return out;
    }

    nlohmann::json _document;
    std::vector<Step> _history;
    std::size_t _size = 0;
    int _group = -1, _groups = 0;
};

const bool registered = registerEdits<JsonPatchSystem>("JSON Patch") &&
    registerEditsOfRecords<JsonPatchSystem>("JSON Patch");

}}

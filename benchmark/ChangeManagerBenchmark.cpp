/* The change manager against edits of the same document written by hand */

#include <malloc.h>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <benchmark/benchmark.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "ChangeManager.h"
#include "Edits.h"
#include "session/EditorSession.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace {

struct RapidJsonSystem {
    typedef Containers::String Path;
    static Path path(const std::string& pointer) { return pointer; }

    /* Owns its texts, so that copies of them are copies */
    typedef JsonDocument Value;
    static Value value(const std::string& json) {
        JsonDocument out;
        out.Parse(json.data(), json.size());
        return out;
    }

    static std::string textOf(const JsonValue& value) {
        rapidjson::StringBuffer out;
        rapidjson::Writer<rapidjson::StringBuffer> writer{out};
        value.Accept(writer);
        return out.GetString();
    }
};

/* Undo and redo as written by hand for paths like `/objects/<id>/<member>`, in
   an editor without a change manager. Keeps a copy of the value before and
   after. Knows where each record is or, if others edit the document as well,
   searches for it. */
template<bool searches> class HandWritten: public RapidJsonSystem {
public:
    explicit HandWritten(const std::string& json) {
        _document.Parse(json.data(), json.size());
        if(searches)
            return;
        for(const auto& record: objects().GetObject())
            _positions.emplace(nameOf(record), _positions.size());
    }

    JsonAllocator& allocator() { return _document.GetAllocator(); }
    std::string json() const { return textOf(_document); }

    void push(Containers::StringView path, const JsonValue* value) {
        _history.resize(_size);
        const JsonValue* const current = find(path);
        _history.push_back({path, copyOf(current), copyOf(value), _group});
        ++_size;
        perform(path, value ? _history.back().newValue.get() : nullptr);
    }

    void drag(Containers::StringView path, const JsonValue& value) {
        Edit* const dragged = lastDrag(path);
        if(!dragged) {
            push(path, &value);
            _drags[std::string{path.data(), path.size()}] = _size - 1;
            return;
        }
        dragged->newValue->CopyFrom(value, allocator());
        perform(path, dragged->newValue.get());
    }

    std::size_t read(Containers::StringView path) {
        return find(path)->GetStringLength();
    }

    void beginGroup() {
        _group = ++_groups;
        _drags.clear();
    }
    void commit() { _group = -1; }

    void undo() {
        const int group = _history[_size - 1].group;
        do {
            const Edit& edit = _history[--_size];
            const Edit reverse{edit.path, copyOf(edit.newValue.get()),
                copyOf(edit.oldValue.get()), -1};
            perform(reverse.path, reverse.newValue.get());
        } while(_size && group != -1 && _history[_size - 1].group == group);
    }

    void redo() {
        const int group = _history[_size].group;
        do {
            const Edit& edit = _history[_size++];
            perform(edit.path, edit.newValue.get());
        } while(_size != _history.size() && group != -1 &&
            _history[_size].group == group);
    }

private:
    struct Edit {
        Containers::String path;
        std::unique_ptr<JsonValue> oldValue;
        std::unique_ptr<JsonValue> newValue;
        int group;
    };

    Edit* lastDrag(Containers::StringView path) {
        if(_size && Containers::StringView{_history.back().path} == path &&
            _history.back().group == _group)
            return &_history.back();
        if(_group == -1)
            return nullptr;
        const auto found = _drags.find(std::string{path.data(), path.size()});
        return found == _drags.end() ? nullptr : &_history[found->second];
    }

    /* The segments of a path after the section */
    struct Names {
        explicit Names(Containers::StringView path) {
            constexpr std::size_t begin = sizeof("/objects/") - 1;
            const std::string_view rest{
                path.data() + begin, path.size() - begin};
            const std::size_t slash = rest.find('/');
            record = rest.substr(0, slash);
            if(slash != std::string_view::npos)
                member = rest.substr(slash + 1);
        }

        std::string_view record, member;
    };

    static std::string_view nameOf(const JsonValue::Member& member) {
        return {member.name.GetString(), member.name.GetStringLength()};
    }

    static rapidjson::Value::StringRefType ref(std::string_view string) {
        return rapidjson::StringRef(string.data(), string.size());
    }

    JsonValue& objects() { return _document.MemberBegin()->value; }

    JsonValue* findRecord(std::string_view name) {
        if(searches) {
            const auto found = objects().FindMember(JsonValue{ref(name)});
            return found == objects().MemberEnd() ? nullptr : &found->value;
        }
        const auto found = _positions.find(name);
        return found == _positions.end()
            ? nullptr
            : &(objects().MemberBegin() + std::ptrdiff_t(found->second))->value;
    }

    JsonValue* find(Containers::StringView path) {
        const Names names{path};
        JsonValue* const record = findRecord(names.record);
        if(!record || names.member.empty())
            return record;
        const auto found = record->FindMember(JsonValue{ref(names.member)});
        return found == record->MemberEnd() ? nullptr : &found->value;
    }

    std::unique_ptr<JsonValue> copyOf(const JsonValue* value) {
        return value ? std::make_unique<JsonValue>(*value, allocator())
                     : nullptr;
    }

    void perform(Containers::StringView path, const JsonValue* value) {
        JsonValue* const current = find(path);
        if(current && value)
            current->CopyFrom(*value, allocator());
        else if(value)
            add(Names{path}, JsonValue{*value, allocator()});
        else if(current)
            erase(Names{path});
    }

    void add(const Names& names, JsonValue&& value) {
        JsonValue& parent =
            names.member.empty() ? objects() : *findRecord(names.record);
        const std::string_view name =
            names.member.empty() ? names.record : names.member;
        parent.AddMember(JsonValue{ref(name), allocator()}, value, allocator());
        if(!searches && names.member.empty())
            _positions.emplace(
                nameOf(*(parent.MemberEnd() - 1)), _positions.size());
    }

    /* Of records only the last one, so that no other moves */
    void erase(const Names& names) {
        if(names.member.empty()) {
            if(!searches)
                _positions.erase(names.record);
            objects().EraseMember(objects().MemberEnd() - 1);
        } else {
            JsonValue& record = *findRecord(names.record);
            record.EraseMember(record.FindMember(JsonValue{ref(names.member)}));
        }
    }

    JsonDocument _document;
    std::unordered_map<std::string_view, std::size_t> _positions;
    std::vector<Edit> _history;
    /* Position, in the group, of the change of each dragged value */
    std::unordered_map<std::string, std::size_t> _drags;
    std::size_t _size = 0;
    int _group = -1, _groups = 0;
};

typedef HandWritten<false> Reference;
typedef HandWritten<true> SearchingReference;

/* Passes the calls on to the change manager */
class Ours: public RapidJsonSystem {
public:
    explicit Ours(const std::string& json) { _session->parse(json); }

    JsonAllocator& allocator() { return manager().allocator(); }
    std::string json() const {
        return textOf(_session->projectFile().document);
    }

    void push(Containers::StringView path, const JsonValue* value) {
        manager().pushChange(Containers::String{path}, value, false);
    }
    void drag(Containers::StringView path, const JsonValue& value) {
        manager().pushChange(path, value, true);
    }
    void beginGroup() { manager().beginGroup(); }
    void commit() { manager().commit(); }
    void undo() { manager().undoLast(); }
    void redo() { manager().redoLastUndo(); }

    std::size_t read(Containers::StringView path) {
        return _session->projectFile()[path].asString().size();
    }

protected:
    ChangeManager& manager() { return _session->changeManager(); }

    const std::unique_ptr<EditorSession> _session =
        std::make_unique<EditorSession>();
};

/* Under a promise that nobody else edits */
class OursPromised: public Ours {
public:
    using Ours::Ours;

private:
    const ExclusiveEdits _promise{manager()};
};

/* With a handler that reads the new value, like a panel */
class OursHandled: public Ours {
public:
    explicit OursHandled(const std::string& json): Ours{json} {
        manager().addChangeHandler(
            "objects",
            [this](const Change& change,
                Containers::ArrayView<Containers::StringView>, void*) {
                if(change.newValue)
                    benchmark::DoNotOptimize(read(change.path));
            },
            nullptr);
    }
};

/* Bytes for each of 10,000 changes, in the document's memory pool and in all */
template<class System, void (Edits<System>::*operation)(System&)>
void memory(benchmark::State& state) {
    for(auto _: state) {
        Edits<System> edits{10000};
        System system{documentJson(10000)};
        edits.modify(system);
        edits.drag(system);
        edits.drag(system);
        const std::size_t pool = system.allocator().Size();
        const std::size_t heap = mallinfo2().uordblks + mallinfo2().hblkhd;
        for(std::size_t i = 0; i != 10000; ++i)
            (edits.*operation)(system);
        state.counters["poolBytes"] =
            double(system.allocator().Size() - pool) / 10000.0;
        state.counters["allBytes"] =
            double(mallinfo2().uordblks + mallinfo2().hblkhd - heap) / 10000.0;
    }
}

template<class System>
void prepareSelection(Edits<System>& edits, System& system, std::size_t size) {
    edits.select(system, size);
}

template<class System>
void preparePaste(Edits<System>& edits, System& system, std::size_t) {
    edits.paste(system);
}

/* Edits as in an editor, which reads in between */
template<class System> bool registerEditorRows(const char* who) {
    typedef Edits<System> E;
    registerEdit<System>(who, {"editor/modifyAndRead", &E::modifyAndRead});
    registerEdit<System>(who,
        {"editor/dragSelection", &E::dragSelection, 1, prepareSelection<System>,
            200000},
        30, 30000);
    return true;
}

template<class System> bool registerPaste(const char* who) {
    registerEdit<System>(who,
        {"editor/undoAndRedoPaste", &Edits<System>::undoAndRedo, GroupSize,
            preparePaste<System>});
    return true;
}

template<class System> bool registerSearched(const char* who) {
    registerEdit<System>(who,
        {"editor/createRecordAndRead", &Edits<System>::createRecordAndRead, 2});
    return true;
}

const bool registered = registerEdits<Ours>("ours") &&
    registerEdits<Reference>("reference") &&
    registerEditsOfRecords<OursPromised>("ours") &&
    registerEditsOfRecords<Reference>("reference") &&
    registerEditorRows<Ours>("ours") &&
    registerEditorRows<Reference>("reference") &&
    registerPaste<OursHandled>("ours") &&
    registerPaste<Reference>("reference") && registerSearched<Ours>("ours") &&
    registerSearched<SearchingReference>("reference");

#define MEMORY(operation)                                                      \
    BENCHMARK((memory<Ours, &Edits<Ours>::operation>))                         \
        ->Name("memory/" #operation "/ours")                                   \
        ->Iterations(1);                                                       \
    BENCHMARK((memory<Reference, &Edits<Reference>::operation>))               \
        ->Name("memory/" #operation "/reference")                              \
        ->Iterations(1);

MEMORY(modify)
MEMORY(drag)
MEMORY(undoAndRedo)

}}

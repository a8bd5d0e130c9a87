/* The change manager against edits of the same document written by hand: each
   is timed with both, as in `push/modify/ours/1000` and
   `push/modify/reference/1000`, with the number of values in the document or
   of changes in the history last. */

#include <cstdint>
#include <malloc.h>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <Corrade/Utility/Format.h>
#include <benchmark/benchmark.h>

#include "ChangeManager.h"
#include "LargeProject.h"

namespace OrrelinEngine { namespace {

constexpr std::size_t ValuesPerRecord = 5;
constexpr std::size_t GroupSize = 10000;
/* Changes after which everything is built anew, as no memory is ever freed */
constexpr std::size_t MaxChanges = 200000;

/* Distinct, and in no order */
Containers::String idOf(std::size_t i) {
    return Utility::format("{:.8x}", std::uint32_t(i) * 2654435761u);
}

Containers::String document(std::size_t valueCount) {
    std::string out = R"({"objects": {)";
    for(std::size_t i = 0; i != valueCount / ValuesPerRecord; ++i) {
        const Containers::String record = Utility::format(
            R"({}"{}": {{"name": "The name of object {}", "visible": true,
                "translation": [0.5, 1.5, 2.5]}})",
            i ? "," : "", idOf(i), i);
        out.append(record.data(), record.size());
    }
    out += "}}";
    return {out.data(), out.size()};
}

/* What an editor without a change manager would do for a path like
   `/objects/<id>/<member>`: knows where each record is, keeps a copy of the
   value before and after */
class Reference {
public:
    explicit Reference(const Containers::String& json) {
        _document.Parse(json.data(), json.size());
        for(const auto& record: objects().GetObject())
            _positions.emplace(nameOf(record), _positions.size());
    }

    JsonAllocator& allocator() { return _document.GetAllocator(); }

    void push(Containers::StringView path, const JsonValue* value) {
        _history.resize(_size);
        const JsonValue* const current = find(path);
        _history.push_back({path, copyOf(current), copyOf(value), _group});
        ++_size;
        perform(path, value ? _history.back().newValue.get() : nullptr);
    }

    void drag(Containers::StringView path, const JsonValue& value) {
        if(!_size || Containers::StringView{_history.back().path} != path ||
            _history.back().group != _group)
            return push(path, &value);
        _history.back().newValue->CopyFrom(value, allocator());
        perform(path, _history.back().newValue.get());
    }

    void beginGroup() { _group = ++_groups; }
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
        const Edit& edit = _history[_size++];
        perform(edit.path, edit.newValue.get());
    }

private:
    struct Edit {
        Containers::String path;
        std::unique_ptr<JsonValue> oldValue;
        std::unique_ptr<JsonValue> newValue;
        int group;
    };

    /* Of a path, after the section */
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
        if(names.member.empty())
            _positions.emplace(
                nameOf(*(parent.MemberEnd() - 1)), _positions.size());
    }

    /* A record only if it's the last one */
    void erase(const Names& names) {
        if(names.member.empty()) {
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
    std::size_t _size = 0;
    int _group = -1, _groups = 0;
};

/* The same calls, passed on */
class Ours {
public:
    explicit Ours(const Containers::String& json) { _session.parse(json); }

    JsonAllocator& allocator() { return manager().allocator(); }
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

private:
    ChangeManager& manager() { return _session.changeManager(); }

    EditorSession _session;
};

/* Values to push, and where to */
class Edits {
public:
    explicit Edits(std::size_t valueCount) {
        _texts.Parse(R"(["The one text of an object", "Some other text"])");
        _vector.Parse("[1.25, 2.25, 3.25]");
        _record.Parse(R"({"name": "A record", "visible": true})");
        const std::size_t recordCount = valueCount / ValuesPerRecord;
        for(std::size_t i = 0; i != 8192; ++i) {
            const Containers::String record =
                "/objects/" + idOf(i * 7919 % recordCount);
            _names.push_back(record + "/name");
            _created.push_back(record + "/subtitle");
        }
        _slider = _names[0].exceptSuffix("name") + "translation";
    }

    std::size_t index() { return _next++ % _names.size(); }

    /* Owned, so that copies are copies */
    const JsonValue& text() { return _texts[_next % 2]; }

    const JsonValue& vector() {
        _vector[0].SetDouble(double(++_next));
        return _vector;
    }

    template<class System> void modify(System& system) {
        const Containers::String& path = _names[index()];
        system.push(path, &text());
    }

    template<class System> void create(System& system) {
        const Containers::String& path = _created[index()];
        system.push(path, &text());
        system.push(path, nullptr);
    }

    template<class System> void createRecord(System& system) {
        system.push("/objects/new-record", &_record);
        system.push("/objects/new-record", nullptr);
    }

    template<class System> void drag(System& system) {
        system.drag(_slider, vector());
    }

    template<class System> void undoAndRedo(System& system) {
        system.undo();
        system.redo();
    }

    template<class System> void group(System& system) {
        system.beginGroup();
        for(std::size_t i = 0; i != GroupSize; ++i)
            modify(system);
        system.commit();
        system.undo();
    }

    template<class System> void groupOfRecords(System& system) {
        system.beginGroup();
        for(std::size_t i = 0; i != GroupSize / 2; ++i)
            createRecord(system);
        system.commit();
        system.undo();
    }

private:
    std::size_t _next = 0;
    std::vector<Containers::String> _names, _created;
    Containers::String _slider;
    JsonDocument _texts, _vector, _record;
};

template<class System> using Operation = void (Edits::*)(System&);

/* Time of an operation that makes given number of changes */
template<class System, Operation<System> operation>
void time(benchmark::State& state, std::size_t valueCount,
    std::size_t historySize, std::size_t changeCount) {
    keepFreedMemory();
    const Containers::String json = document(valueCount);
    Edits edits{valueCount};
    std::unique_ptr<System> system;
    std::size_t left = 0;
    for(auto _: state) {
        if(left < changeCount) {
            state.PauseTiming();
            system.reset();
            system = std::make_unique<System>(json);
            for(std::size_t i = 0; i != historySize; ++i)
                edits.modify(*system);
            /* The index of a document and the first drag */
            edits.drag(*system);
            edits.drag(*system);
            left = MaxChanges;
            state.ResumeTiming();
        }
        (edits.*operation)(*system);
        left -= changeCount;
    }
    state.SetItemsProcessed(std::int64_t(changeCount) * state.iterations());
}

template<class System, Operation<System> operation, std::size_t changeCount>
void inDocument(benchmark::State& state) {
    time<System, operation>(
        state, std::size_t(state.range(0)), 100, changeCount);
}

template<class System, Operation<System> operation, std::size_t changeCount>
void afterHistory(benchmark::State& state) {
    time<System, operation>(
        state, 10000, std::size_t(state.range(0)), changeCount);
}

/* Bytes for each of 10,000 changes, in the document's memory pool and in all */
template<class System, Operation<System> operation>
void memory(benchmark::State& state) {
    for(auto _: state) {
        Edits edits{10000};
        System system{document(10000)};
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

#define DOCUMENT_SIZES ->RangeMultiplier(10)->Range(1000, 1000000)
#define BOTH(function, operation, changes, name)                               \
    BENCHMARK((function<Ours, &Edits::operation<Ours>, changes>))              \
        ->Name(name "/ours") DOCUMENT_SIZES;                                   \
    BENCHMARK((function<Reference, &Edits::operation<Reference>, changes>))    \
        ->Name(name "/reference") DOCUMENT_SIZES;

BOTH(inDocument, modify, 1, "push/modify")
BOTH(inDocument, create, 2, "push/createMember")
BOTH(inDocument, createRecord, 2, "push/createRecord")
BOTH(inDocument, drag, 1, "push/continuous")
BOTH(inDocument, undoAndRedo, 1, "undoAndRedo")
BOTH(inDocument, group, GroupSize, "group/modify")
BOTH(inDocument, groupOfRecords, GroupSize, "group/createRecord")
BOTH(afterHistory, modify, 1, "history/modify")
BOTH(afterHistory, drag, 1, "history/continuous")
BOTH(afterHistory, undoAndRedo, 1, "history/undoAndRedo")

#define MEMORY(operation)                                                      \
    BENCHMARK((memory<Ours, &Edits::operation<Ours>>))                         \
        ->Name("memory/" #operation "/ours")                                   \
        ->Iterations(1);                                                       \
    BENCHMARK((memory<Reference, &Edits::operation<Reference>>))               \
        ->Name("memory/" #operation "/reference")                              \
        ->Iterations(1);

MEMORY(modify)
MEMORY(drag)
MEMORY(undoAndRedo)

}}

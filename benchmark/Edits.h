#ifndef Orrelin_benchmark_Edits_h
#define Orrelin_benchmark_Edits_h

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include "keepFreedMemory.h"

namespace OrrelinEngine {

constexpr std::size_t ValuesPerRecord = 5;
constexpr std::size_t GroupSize = 10000;
/* Changes after which everything is built anew, as not every system frees what
   it doesn't need any more */
constexpr std::size_t MaxChanges = 200000;

/* Distinct, and in no order */
inline std::string recordId(std::size_t i) {
    return Corrade::Utility::format("{:.8x}", std::uint32_t(i) * 2654435761u);
}

inline std::string documentJson(std::size_t valueCount) {
    std::string out = R"({"objects": {)";
    for(std::size_t i = 0; i != valueCount / ValuesPerRecord; ++i)
        out += (i ? ",\"" : "\"") + recordId(i) +
            R"(": {"name": "The name of object )" + std::to_string(i) +
            R"(", "visible": true, "translation": [0.5, 1.5, 2.5]})";
    return out + "}}";
}

/* The same edits of the same document with any system of undo and redo:

       struct System {
           explicit System(const std::string& json);
           typedef … Path;
           static Path path(const std::string& pointer);
           typedef … Value;
           static Value value(const std::string& json);

           void push(const Path& path, const Value* value);
           void drag(const Path& path, const Value& value);
           void beginGroup();
           void commit();
           void undo();
           void redo();
           std::string json() const;
       };

   Paths and values are made beforehand, as each system likes them best. */
template<class System> class Edits {
public:
    explicit Edits(std::size_t valueCount) {
        const std::size_t recordCount = valueCount / ValuesPerRecord;
        /* Odd, so that each gets both texts in turn */
        for(std::size_t i = 0; i != 8191; ++i) {
            const std::string record =
                "/objects/" + recordId(i * 7919 % recordCount);
            _names.push_back(System::path(record + "/name"));
            _created.push_back(System::path(record + "/subtitle"));
        }
        for(const char* i: {"The one text of an object", "Some other text"})
            _texts.push_back(System::value('"' + std::string{i} + '"'));
        for(std::size_t i = 0; i != 64; ++i)
            _vectors.push_back(
                System::value("[" + std::to_string(i) + ".5, 2.25, 3.25]"));
    }

    void modify(System& system) {
        ++_next;
        system.push(of(_names), &of(_texts));
    }

    void createMember(System& system) {
        ++_next;
        system.push(of(_created), &of(_texts));
        system.push(of(_created), nullptr);
    }

    void createRecord(System& system) {
        system.push(_newRecord, &_record);
        system.push(_newRecord, nullptr);
    }

    void drag(System& system) {
        ++_next;
        system.drag(_slider, of(_vectors));
    }

    void undoAndRedo(System& system) {
        system.undo();
        system.redo();
    }

    void group(System& system) {
        system.beginGroup();
        for(std::size_t i = 0; i != GroupSize; ++i)
            modify(system);
        system.commit();
        system.undo();
    }

    void groupOfRecords(System& system) {
        system.beginGroup();
        for(std::size_t i = 0; i != GroupSize / 2; ++i)
            createRecord(system);
        system.commit();
        system.undo();
    }

    /* That all of it is done, with a document of one record */
    bool isRight() {
        System system{documentJson(ValuesPerRecord)};
        system.push(_names[0], &_texts[0]);
        system.push(_created[0], &_texts[0]);
        system.push(_newRecord, &_record);
        system.beginGroup();
        system.push(_names[0], &_texts[1]);
        system.push(_newRecord, nullptr);
        system.commit();
        system.drag(_slider, _vectors[0]);
        system.drag(_slider, _vectors[1]);
        const std::string dragged = R"({"objects": {"00000000": {
            "name": "Some other text", "visible": true,
            "translation": [1.5, 2.25, 3.25],
            "subtitle": "The one text of an object"}}})";
        bool right = isDocument(system, dragged);

        system.undo();
        system.undo();
        right = right && isDocument(system, R"({"objects": {
            "00000000": {"name": "The one text of an object", "visible": true,
                "translation": [0.5, 1.5, 2.5],
                "subtitle": "The one text of an object"},
            "new-record": {"name": "A record", "visible": true}}})");
        system.redo();
        system.redo();
        right = right && isDocument(system, dragged);
        for(int i = 0; i != 5; ++i)
            system.undo();
        return right && isDocument(system, documentJson(ValuesPerRecord));
    }

private:
    template<class T> const T& of(const std::vector<T>& from) const {
        return from[_next % from.size()];
    }

    static bool isDocument(const System& system, const std::string& expected) {
        rapidjson::Document a, b;
        a.Parse(system.json().data());
        b.Parse(expected.data());
        return a == b;
    }

    std::size_t _next = 0;
    std::vector<typename System::Path> _names, _created;
    std::vector<typename System::Value> _texts, _vectors;
    typename System::Path _slider =
        System::path("/objects/00000000/translation");
    typename System::Path _newRecord = System::path("/objects/new-record");
    typename System::Value _record =
        System::value(R"({"name": "A record", "visible": true})");
};

/* Time of an operation that makes given number of changes */
template<class System> void timeEdits(benchmark::State& state,
    void (Edits<System>::*operation)(System&), std::size_t valueCount,
    std::size_t historySize, std::size_t changeCount) {
    const std::string json = documentJson(valueCount);
    Edits<System> edits{valueCount};
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

/* Each is named like `push/modify/ours/1000`, with the number of values in the
   document or of changes in the history last */
template<class System> bool registerEdits(const std::string& who) {
    keepFreedMemory();
    typedef Edits<System> E;
    const struct {
        const char* name;
        void (E::*operation)(System&);
        std::size_t changes;
        bool inHistory;
    } operations[]{
        {"push/modify/", &E::modify, 1, false},
        {"push/createMember/", &E::createMember, 2, false},
        {"push/createRecord/", &E::createRecord, 2, false},
        {"push/continuous/", &E::drag, 1, false},
        {"undoAndRedo/", &E::undoAndRedo, 1, false},
        {"group/modify/", &E::group, GroupSize, false},
        {"group/createRecord/", &E::groupOfRecords, GroupSize, false},
        {"history/modify/", &E::modify, 1, true},
        {"history/continuous/", &E::drag, 1, true},
        {"history/undoAndRedo/", &E::undoAndRedo, 1, true},
    };
    for(const auto& i: operations)
        benchmark::RegisterBenchmark((i.name + who).data(),
            [i](benchmark::State& state) {
                const std::size_t size = std::size_t(state.range(0));
                if(!E{ValuesPerRecord}.isRight())
                    state.SkipWithError("edits come out wrong");
                else if(i.inHistory)
                    timeEdits<System>(
                        state, i.operation, 10000, size, i.changes);
                else
                    timeEdits<System>(state, i.operation, size, 100, i.changes);
            })
            ->RangeMultiplier(10)
            ->Range(1000, 1000000);
    return true;
}

}

#endif

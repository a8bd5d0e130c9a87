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
/* After so many changes everything is built anew, as some systems never free
   memory */
constexpr std::size_t MaxChanges = 200000;

/* Different for each record and not in order, as in an editor's documents */
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
           // Only for the rows named editor/
           std::size_t read(const Path& path);
       };

   Paths and values are made beforehand, as each system likes them best. */
template<class System> class Edits {
public:
    explicit Edits(std::size_t valueCount) {
        const std::size_t recordCount = valueCount / ValuesPerRecord;
        /* An odd number, so that each value gets both texts in turn */
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

    /* Like a panel that shows the value and reads it after each edit */
    void modifyAndRead(System& system) {
        modify(system);
        benchmark::DoNotOptimize(system.read(of(_names)));
    }

    void createRecord(System& system) {
        system.push(_newRecord, &_record);
        system.push(_newRecord, nullptr);
    }

    void drag(System& system) {
        ++_next;
        system.drag(_slider, of(_vectors));
    }

    void createRecordAndRead(System& system) {
        ++_next;
        createRecord(system);
        benchmark::DoNotOptimize(system.read(of(_names)));
    }

    /* New records, as one step */
    void paste(System& system) {
        system.beginGroup();
        for(std::size_t i = 0; i != GroupSize; ++i)
            system.push(
                System::path("/objects/pasted-" + std::to_string(i)), &_record);
        system.commit();
    }

    void select(System& system, std::size_t count) {
        _selection.clear();
        for(std::size_t i = 0; i != count; ++i)
            _selection.push_back(
                System::path("/objects/" + recordId(i) + "/translation"));
        system.beginGroup();
        for(std::size_t i = 0; i != count; ++i)
            dragSelection(system);
    }

    void dragSelection(System& system) {
        ++_next;
        system.drag(of(_selection), of(_vectors));
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

    /* Whether the system does all that is measured, tried on one record */
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
    std::vector<typename System::Path> _names, _created, _selection;
    std::vector<typename System::Value> _texts, _vectors;
    typename System::Path _slider =
        System::path("/objects/00000000/translation");
    typename System::Path _newRecord = System::path("/objects/new-record");
    typename System::Value _record =
        System::value(R"({"name": "A record", "visible": true})");
};

/* One row of the report: an operation to time */
template<class System> struct EditRow {
    const char* name;
    void (Edits<System>::*operation)(System&);
    /* Number of changes that one call makes */
    std::size_t changes = 1;
    /* Called once before the timing, when some changes were made already */
    void (*prepare)(Edits<System>&, System&, std::size_t size) = nullptr;
    /* Values in the document; 0 if the row's size is that number */
    std::size_t values = 0;
    /* Whether the row's size is that of the history */
    bool inHistory = false;
};

template<class System>
void timeEdits(benchmark::State& state, const EditRow<System>& row) {
    const std::size_t size = std::size_t(state.range(0));
    const std::size_t valueCount = row.values ? row.values : size;
    const std::string json = documentJson(valueCount);
    Edits<System> edits{valueCount};
    std::unique_ptr<System> system;
    std::size_t left = 0;
    for(auto _: state) {
        if(left < row.changes) {
            state.PauseTiming();
            system.reset();
            system = std::make_unique<System>(json);
            for(std::size_t i = 0; i != (row.inHistory ? size : 100); ++i)
                edits.modify(*system);
            /* Not timed: indexing the document, and the first drag, which adds
               its changes */
            edits.drag(*system);
            edits.drag(*system);
            if(row.prepare)
                row.prepare(edits, *system, size);
            left = MaxChanges;
            state.ResumeTiming();
        }
        (edits.*row.operation)(*system);
        left -= row.changes;
    }
    state.SetItemsProcessed(std::int64_t(row.changes) * state.iterations());
}

/* Named like `push/modify/ours/1000`, with the size last */
template<class System> void registerEdit(const std::string& who,
    const EditRow<System>& row, std::int64_t smallest = 1000,
    std::int64_t largest = 1000000) {
    benchmark::RegisterBenchmark((row.name + ('/' + who)).data(),
        [row](benchmark::State& state) {
            if(Edits<System>{ValuesPerRecord}.isRight())
                timeEdits<System>(state, row);
            else
                state.SkipWithError("edits come out wrong");
        })
        ->RangeMultiplier(10)
        ->Range(smallest, largest);
}

template<class System> bool registerEdits(const std::string& who) {
    keepFreedMemory();
    typedef Edits<System> E;
    for(const EditRow<System>& row: {
            EditRow<System>{"push/modify", &E::modify},
            {"push/createMember", &E::createMember, 2},
            {"push/continuous", &E::drag},
            {"undoAndRedo", &E::undoAndRedo},
            {"group/modify", &E::group, GroupSize},
            {"history/modify", &E::modify, 1, nullptr, 10000, true},
            {"history/continuous", &E::drag, 1, nullptr, 10000, true},
            {"history/undoAndRedo", &E::undoAndRedo, 1, nullptr, 10000, true},
        })
        registerEdit(who, row);
    return true;
}

/* Rows for which a system may rely on nobody else editing the document */
template<class System> bool registerEditsOfRecords(const std::string& who) {
    typedef Edits<System> E;
    for(const EditRow<System>& row: {
            EditRow<System>{"push/createRecord", &E::createRecord, 2},
            {"group/createRecord", &E::groupOfRecords, GroupSize},
        })
        registerEdit(who, row);
    return true;
}

}

#endif

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <benchmark/benchmark.h>

#include "Tools/LocalizationTools.h"
#include "session/EditorSession.h"
#include "editor/JavaScriptManager.h"
#include "editor/OrrelinEditor.h"
#include "shared/Implementation/stringOf.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace {

using namespace Containers::Literals;

constexpr std::size_t TermsPerObject = 4;

/* Different for each object and not in order, as in an editor's documents */
Containers::String idOf(std::size_t i) {
    return Utility::format("{:.8x}", std::uint32_t(i) * 2654435761u);
}

/* Objects with two texts, one of them with a key of its own, and a button with
   two string parameters */
std::unique_ptr<EditorSession> project(std::size_t objectCount) {
    std::string json = R"({"objects": {)";
    for(std::size_t i = 0; i != objectCount; ++i) {
        const Containers::String object = Utility::format(R"({}"{}": {{
            "name": "Object {}", "components": [
                {{"type": "text", "text": {{"text": "Opening hours"}}}},
                {{"type": "text", "text": {{"text": "Way out",
                    "text_term": "term.{}"}}}},
                {{"type": "button", "button": {{"label": "OK",
                    "tooltip": "Closes the window", "enabled": true}}}}
            ]}})",
            i ? "," : "", idOf(i), i, i);
        json.append(object.data(), object.size());
    }
    json += "}}";

    auto out = std::make_unique<EditorSession>();
    if(!out->parse({json.data(), json.size()}))
        std::abort();
    out->addScriptType("button",
        Containers::arrayView<
            const Containers::Pair<Containers::StringView, unsigned short>>({
            {"label", Data::StringParamType},
            {"tooltip", Data::StringParamType},
            {"enabled", 1},
        }));
    return out;
}

std::unique_ptr<EditorSession> projectOfTerms(std::int64_t terms) {
    return project(std::size_t(terms) / TermsPerObject);
}

void gatherOurs(benchmark::State& state) {
    const auto session = projectOfTerms(state.range(0));
    TermMap strings;
    for(auto _: state)
        LocalizationTools::gatherStrings(session->editor(), strings);
    if(strings.size() != std::size_t(state.range(0)))
        state.SkipWithError("not all terms gathered");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void recordByHand(TermPathMap& terms, TermMap& strings, const JsonValue& values,
    const char* siblingName, Containers::String&& generated,
    Containers::String&& path) {
    const auto sibling = values.FindMember(siblingName);
    Containers::String key = sibling == values.MemberEnd()
        ? std::move(generated)
        : Containers::String{stringOf(sibling->value)};
    terms.emplace(key, path);
    strings.emplace(std::move(path), std::move(key));
}

/* Code that gathers from this very document only, without an editor */
void gatherByHand(
    const JsonValue& document, TermPathMap& terms, TermMap& strings) {
    terms.clear();
    strings.clear();
    for(const auto& object: document["objects"].GetObject()) {
        const Containers::StringView id = stringOf(object.name);
        const JsonValue& components = object.value["components"];
        for(rapidjson::SizeType i = 0; i != components.Size(); ++i) {
            const JsonValue& component = components[i];
            if(stringOf(component["type"]) == "text")
                recordByHand(terms, strings, component["text"], "text_term",
                    Utility::format("{}-text-{}", id, i),
                    Utility::format(
                        "/objects/{}/components/{}/text/text", id, i));
            else if(stringOf(component["type"]) == "button") {
                const JsonValue& button = component["button"];
                recordByHand(terms, strings, button, "label_term",
                    Utility::format("{}-js-{}-label", id, i),
                    Utility::format(
                        "/objects/{}/components/{}/button/label", id, i));
                recordByHand(terms, strings, button, "tooltip_term",
                    Utility::format("{}-js-{}-tooltip", id, i),
                    Utility::format(
                        "/objects/{}/components/{}/button/tooltip", id, i));
            }
        }
    }
}

void gatherReference(benchmark::State& state) {
    const auto session = projectOfTerms(state.range(0));
    TermMap strings;
    TermPathMap& terms = session->localization().terms;
    for(auto _: state)
        gatherByHand(session->projectFile().document, terms, strings);
    TermMap ours;
    const TermPathMap byHand = std::move(terms);
    LocalizationTools::gatherStrings(session->editor(), ours);
    if(ours != strings || terms != byHand)
        state.SkipWithError("the tables differ");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(gatherOurs)
    ->Name("gather/ours")
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(gatherReference)
    ->Name("gather/reference")
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);

/* Paths of names of objects, jumping about in the document */
class Paths {
public:
    explicit Paths(std::int64_t objectCount) {
        for(std::size_t i = 0; i != 4096; ++i)
            _paths.push_back(Utility::format("/objects/{}/name",
                idOf((i * 7919) % std::size_t(objectCount))));
    }

    Containers::StringView next() { return _paths[_next++ % _paths.size()]; }

private:
    std::vector<Containers::String> _paths;
    std::size_t _next = 0;
};

void expectFound(benchmark::State& state, const ValueAccess& value) {
    if(!value.hasValue())
        state.SkipWithError("not found");
}

void lookupOurs(benchmark::State& state) {
    const auto session = project(std::size_t(state.range(0)));
    Paths paths{state.range(0)};
    for(auto _: state)
        expectFound(state, session->editor().project[paths.next()]);
}

/* A table of all objects, made by hand and never brought up to date */
void lookupReference(benchmark::State& state) {
    const auto session = project(std::size_t(state.range(0)));
    std::unordered_map<Containers::String, const JsonValue*, StrHash, StrEq>
        objects;
    for(const auto& object:
        session->projectFile().document["objects"].GetObject())
        objects.emplace(stringOf(object.name), &object.value);

    Paths paths{state.range(0)};
    for(auto _: state) {
        const Containers::StringView path = paths.next();
        const auto found = objects.find(
            Containers::String{path.exceptPrefix("/objects/"_s.size())
                                   .exceptSuffix("/name"_s.size())});
        if(found == objects.end() || !found->second->HasMember("name"))
            state.SkipWithError("not found");
    }
}

void lookupAbsent(benchmark::State& state) {
    const auto session = project(std::size_t(state.range(0)));
    for(auto _: state)
        if(session->editor().project["/objects/absent/name"].hasValue())
            state.SkipWithError("found");
}

/* Removes a record and adds another, directly, then looks many up */
void lookupAfterDirectEdits(benchmark::State& state) {
    constexpr std::size_t Lookups = 1000;
    const auto session = project(std::size_t(state.range(0)));
    JsonDocument& document = session->projectFile().document;
    JsonValue& objects = document["objects"];
    Paths paths{state.range(0)};
    std::size_t edits = 0;
    while(state.KeepRunningBatch(Lookups)) {
        state.PauseTiming();
        /* The record removed is none of those that are looked up */
        if(edits)
            objects.EraseMember(objects.MemberEnd() - 1);
        const Containers::String name = Utility::format("edit{}", edits++);
        objects.AddMember(
            JsonValue{name.data(), rapidjson::SizeType(name.size()),
                document.GetAllocator()},
            JsonValue{rapidjson::kObjectType}, document.GetAllocator());
        /* Two records in the middle change places, too */
        const auto first = objects.MemberBegin() + objects.MemberCount() / 2;
        first->name.Swap((first + 1)->name);
        first->value.Swap((first + 1)->value);
        state.ResumeTiming();
        for(std::size_t i = 0; i != Lookups; ++i)
            expectFound(state, session->editor().project[paths.next()]);
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for(const std::int64_t size: {500, 5000, 50000, 500000})
        benchmark->Arg(size);
}

BENCHMARK(lookupOurs)->Name("lookup/ours")->Apply(sizes);
BENCHMARK(lookupReference)->Name("lookup/reference")->Apply(sizes);
BENCHMARK(lookupAbsent)->Name("lookup/absent")->Apply(sizes);
BENCHMARK(lookupAfterDirectEdits)
    ->Name("lookup/afterDirectEdits")
    ->Apply(sizes);

}}

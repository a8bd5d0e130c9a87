/* Records of many values. An accessor has to search the record to find out that
   a name is absent, and one without an index searches for every name. A tool
   that asked an accessor for each term would take quadratic time here. */

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <benchmark/benchmark.h>

#include "Tools/LocalizationTools.h"
#include "editor/AllLanguages.h"
#include "session/EditorSession.h"
#include "editor/JavaScriptManager.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "keepFreedMemory.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

/* Two components of half of the terms each, which alternate in the order of
   their keys, and a language file that lists all */
struct LargeComponents {
    explicit LargeComponents(std::size_t terms):
        folder{std::filesystem::temp_directory_path() / "orrelin-XXXXXX"} {
        std::vector<std::string> names;
        for(std::size_t i = 0; i != terms / 2; ++i)
            names.push_back("parameter " + std::to_string(i));
        std::vector<Containers::Pair<Containers::StringView, unsigned short>>
            parameters;
        for(const std::string& name: names)
            parameters.emplace_back(name, Data::StringParamType);
        session.addScriptType("form",
            Containers::arrayView(parameters.data(), parameters.size()));

        std::string json = R"({"languages": {"de": {}}, "objects": {)";
        for(const char* const object: {"a", "b"}) {
            json += (*object == 'a' ? "\"" : ", \"") + std::string{object} +
                R"(": {"components": [{"type": "form", "form": {"first": "")";
            for(const std::string& name: names)
                json += ", \"" + name + R"(": "Text", ")" + name +
                    "_term\": \"" + name + object + "\"";
            json += "}}]}";
        }
        if(!session.parse(json + "}}") || !mkdtemp(folder.data()))
            std::abort();
        gatherStrings(session.editor(), strings);

        Containers::Array<Containers::Array<char>> files = write();
        std::ofstream{folder + "/de.json"}.write(
            files[0].data(), std::streamsize(files[0].size()));
    }
    ~LargeComponents() { std::filesystem::remove_all(folder); }

    Containers::Array<Containers::Array<char>> write() {
        Containers::Array<Containers::String> names;
        Containers::Array<Containers::Array<char>> contents;
        writeTerms(session.editor(), {"de"}, LocalizationFormat::I18next, names,
            contents);
        return contents;
    }

    EditorSession session;
    TermMap strings;
    std::string folder;
};

template<class Function> void each(benchmark::State& state, Function function) {
    LargeComponents components{std::size_t(state.range(0))};
    const std::size_t terms = components.session.localization().terms.size();
    if(terms != std::size_t(state.range(0)))
        state.SkipWithError("not all terms gathered");
    for(auto _: state)
        function(state, components);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void gather(benchmark::State&, LargeComponents& components) {
    gatherStrings(components.session.editor(), components.strings);
}

void write(benchmark::State&, LargeComponents& components) {
    benchmark::DoNotOptimize(components.write());
}

void import(benchmark::State&, LargeComponents& components) {
    importTerms(components.session.editor(), components.folder,
        LocalizationFormat::I18next);
}

/* Adds the project's first language while half of the terms lead nowhere */
void addFirstLanguage(benchmark::State& state, LargeComponents& components) {
    state.PauseTiming();
    LocalizationData& data = components.session.localization();
    components.session.projectFile().document["languages"].RemoveAllMembers();
    data.translations.clear();
    for(auto& term: data.terms)
        if(term.first.hasSuffix('a') && !term.second.hasSuffix('!'))
            term.second = term.second + "!";
    state.ResumeTiming();
    addLanguage(components.session.editor(), 0);
    state.PauseTiming();
    if(data.translations.begin()->second.size() != data.terms.size())
        state.SkipWithError("not all terms added");
    state.ResumeTiming();
}

const bool registered = [] {
    keepFreedMemory();
    const struct {
        const char* name;
        void (*function)(benchmark::State&, LargeComponents&);
    } all[]{{"largeComponent/gather", gather}, {"largeComponent/write", write},
        {"largeComponent/import", import},
        {"largeComponent/addFirstLanguage", addFirstLanguage}};
    for(const auto& i: all)
        benchmark::RegisterBenchmark(i.name,
            [function = i.function](
                benchmark::State& state) { each(state, function); })
            ->Arg(2000)
            ->Arg(16000)
            ->Arg(128000)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

}}

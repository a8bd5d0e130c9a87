#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <benchmark/benchmark.h>

#include "ChangeManager.h"
#include "LargeProject.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

/* A project and two folders, one with a file of German translations, one with
   a file of English texts that all differ from the project's */
struct Files: LargeProject {
    explicit Files(std::size_t terms):
        LargeProject{terms}, folder{std::filesystem::temp_directory_path() /
                                 "orrelin-XXXXXX"} {
        if(!mkdtemp(folder.data()))
            std::abort();
        content = "{\n  \"translation\": {";
        const char* separator = "\n    \"";
        for(const auto& term: session.localization().terms) {
            content += separator + std::string{term.first} + "\": \"*" +
                std::string{session.editor().project[term.second].asString()} +
                "\"";
            separator = ",\n    \"";
        }
        content += "\n  }\n}\n";
        for(const char* const language: {"de", "en"}) {
            std::filesystem::create_directory(path(language));
            std::ofstream{path(language) + "/" + language + ".json"} << content;
        }
    }
    ~Files() { std::filesystem::remove_all(folder); }

    std::string path(const char* language) const {
        return folder + "/" + language;
    }

    std::string folder;
    std::string content;
};

/* Kept for the next benchmarks of the same size */
Files& files(std::size_t terms) {
    static std::unique_ptr<Files> files;
    static std::size_t size = 0;
    if(size != terms) {
        files.reset();
        files = std::make_unique<Files>(terms);
        size = terms;
    }
    return *files;
}

void setProcessed(benchmark::State& state, const Files& from) {
    state.SetBytesProcessed(
        std::int64_t(state.iterations() * from.content.size()));
    state.SetItemsProcessed(std::int64_t(state.iterations()) * state.range(0));
}

void translationsOurs(benchmark::State& state) {
    Files& from = files(std::size_t(state.range(0)));
    for(auto _: state) {
        importTerms(from.session.editor(), from.path("de"),
            LocalizationFormat::I18next);
        state.PauseTiming();
        if(from.session.localization().translations.at("de").size() !=
            std::size_t(state.range(0)))
            state.SkipWithError("not all imported");
        from.session.localization().translations.clear();
        state.ResumeTiming();
    }
    setProcessed(state, from);
}

void translationsReference(benchmark::State& state) {
    const Files& from = files(std::size_t(state.range(0)));
    for(auto _: state) {
        TranslationMap out;
        JsonDocument document;
        document.Parse(from.content.data(), from.content.size());
        for(const auto& i: document["translation"].GetObject())
            out[Containers::String{i.name.GetString(),
                i.name.GetStringLength()}] = Containers::String{
                i.value.GetString(), i.value.GetStringLength()};
        state.PauseTiming();
        out.clear();
        state.ResumeTiming();
    }
    setProcessed(state, from);
}

enum class Step { Import, Undo, Redo };

/* All texts of the project change each time */
void sources(benchmark::State& state, Step measured) {
    Files& from = files(std::size_t(state.range(0)));
    ChangeManager& changes = from.session.changeManager();
    const auto step = [&](Step which, auto&& function) {
        if(which == measured)
            state.ResumeTiming();
        function();
        if(which == measured)
            state.PauseTiming();
    };
    const ValueAccess text =
        from.session.editor()
            .project[from.session.localization().terms.rbegin()->second];
    for(auto _: state) {
        state.PauseTiming();
        step(Step::Import, [&] {
            importTerms(from.session.editor(), from.path("en"),
                LocalizationFormat::I18next);
        });
        if(!text.asString().hasPrefix('*'))
            state.SkipWithError("not imported");
        step(Step::Undo, [&] { changes.undoLast(); });
        if(text.asString().hasPrefix('*'))
            state.SkipWithError("not undone");
        step(Step::Redo, [&] { changes.redoLastUndo(); });
        changes.undoLast();
        state.ResumeTiming();
    }
    setProcessed(state, from);
}

const bool registered = [] {
    keepFreedMemory();
    for(const int terms: {1000, 10000, 100000, 1000000}) {
        const auto add = [terms](const char* name, auto&& function) {
            return benchmark::RegisterBenchmark(name, function)
                ->Arg(terms)
                ->Unit(benchmark::kMillisecond);
        };
        add("import/ours", translationsOurs);
        add("import/reference", translationsReference);

        /* Limited, as the values of all changes stay in the project's pool */
        const int times = terms < 1000000 ? 1000000 / terms : 2;
        const struct {
            const char* name;
            Step step;
        } steps[]{{"sources/import", Step::Import},
            {"sources/undo", Step::Undo}, {"sources/redo", Step::Redo}};
        for(const auto& i: steps)
            add(i.name, [step = i.step](benchmark::State& state) {
                sources(state, step);
            })->Iterations(times);
    }
    return true;
}();

}}

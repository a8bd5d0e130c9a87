#include <memory>
#include <vector>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
#include <benchmark/benchmark.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "LargeProject.h"
#include "editor/AllLanguages.h"

namespace OrrelinEngine { namespace {

/* A project with translations that read like its texts, so that the files of
   all languages are the same */
struct Translated: LargeProject {
    explicit Translated(std::size_t terms, std::size_t languageCount):
        LargeProject{terms}, languages{"en"} {
        for(std::size_t i = 0; languages.size() != languageCount; ++i) {
            if(AllLanguages[i].code == "en")
                continue;
            languages.push_back(AllLanguages[i].code);
            translate(AllLanguages[i].code);
        }
    }

    std::vector<Containers::StringView> languages;
};

/* Kept for the next benchmarks of the same size */
Translated& project(std::size_t terms, std::size_t languageCount) {
    static std::unique_ptr<Translated> project;
    static std::size_t size;
    if(!project || size != terms ||
        project->languages.size() != languageCount) {
        project.reset();
        project = std::make_unique<Translated>(terms, languageCount);
        size = terms;
    }
    return *project;
}

Containers::Array<Containers::Array<char>> write(Translated& from) {
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    LocalizationTools::writeTerms(from.session.editor(),
        Containers::arrayView(from.languages.data(), from.languages.size()),
        LocalizationTools::LocalizationFormat::I18next, names, contents);
    return contents;
}

void setProcessed(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(std::int64_t(bytes));
    state.SetItemsProcessed(
        std::int64_t(state.iterations()) * state.range(0) * state.range(1));
}

void writeOurs(benchmark::State& state) {
    Translated& from =
        project(std::size_t(state.range(0)), std::size_t(state.range(1)));
    std::size_t bytes = 0;
    for(auto _: state) {
        const auto contents = write(from);
        bytes += contents[0].size() * contents.size();
    }
    setProcessed(state, bytes);
}

void writeReference(benchmark::State& state) {
    Translated& from =
        project(std::size_t(state.range(0)), std::size_t(state.range(1)));
    JsonDocument document;
    std::string expected;
    {
        const auto contents = write(from);
        for(const auto& i: contents)
            if(std::string(i.begin(), i.end()) !=
                std::string(contents[0].begin(), contents[0].end()))
                state.SkipWithError("files differ");
        expected.assign(contents[0].begin(), contents[0].end());
        document.Parse(expected.data(), expected.size());
    }

    std::size_t bytes = 0;
    for(auto _: state) {
        std::vector<rapidjson::StringBuffer> contents(from.languages.size());
        for(rapidjson::StringBuffer& out: contents) {
            rapidjson::PrettyWriter<rapidjson::StringBuffer> writer{out};
            writer.SetIndent(' ', 2);
            document.Accept(writer);
            out.Put('\n');
        }
        for(const rapidjson::StringBuffer& out: contents) {
            if(out.GetSize() != expected.size())
                state.SkipWithError("not the same bytes");
            bytes += out.GetSize();
        }
        if(expected != contents[0].GetString())
            state.SkipWithError("not the same bytes");
    }
    setProcessed(state, bytes);
}

const bool registered = [] {
    keepFreedMemory();
    for(const int terms: {1000, 10000, 100000, 1000000})
        for(const int languages: {1, 10, 50}) {
            /* More would take gigabytes */
            if(terms * languages > 5000000)
                continue;
            benchmark::RegisterBenchmark("write/ours", writeOurs)
                ->Args({terms, languages})
                ->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark("write/reference", writeReference)
                ->Args({terms, languages})
                ->Unit(benchmark::kMillisecond);
        }
    return true;
}();

}}

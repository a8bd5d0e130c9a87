/* Language files with nlohmann-json: read into a table, and written from a
   document that is there */

#include <map>
#include <optional>
#include <string>
#include <vector>
#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include "languageFile.h"
#include "keepFreedMemory.h"

namespace OrrelinEngine { namespace {

void import(benchmark::State& state) {
    const std::string content = languageFile(std::size_t(state.range(0)));
    for(auto _: state) {
        std::map<std::string, std::optional<std::string>> out;
        const nlohmann::json document = nlohmann::json::parse(content);
        for(const auto& term: document["translation"].items())
            out.emplace(term.key(), term.value().get<std::string>());
        state.PauseTiming();
        if(out.size() != std::size_t(state.range(0)))
            state.SkipWithError("not all imported");
        out.clear();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(std::int64_t(state.iterations() * content.size()));
    state.SetItemsProcessed(std::int64_t(state.iterations()) * state.range(0));
}

void write(benchmark::State& state) {
    const std::string expected = languageFile(std::size_t(state.range(0)));
    const auto document = nlohmann::json::parse(expected);
    std::size_t bytes = 0;
    for(auto _: state) {
        std::vector<std::string> contents(std::size_t(state.range(1)));
        for(std::string& out: contents) {
            out = document.dump(2) + "\n";
            bytes += out.size();
        }
        if(contents[0] != expected)
            state.SkipWithError("not the same bytes");
    }
    state.SetBytesProcessed(std::int64_t(bytes));
    state.SetItemsProcessed(
        std::int64_t(state.iterations()) * state.range(0) * state.range(1));
}

const bool registered = [] {
    keepFreedMemory();
    for(const int terms: {1000, 10000, 100000, 1000000}) {
        benchmark::RegisterBenchmark("import/nlohmann-json", import)
            ->Arg(terms)
            ->Unit(benchmark::kMillisecond);
        for(const int languages: {1, 10, 50})
            if(terms * languages <= 5000000)
                benchmark::RegisterBenchmark("write/nlohmann-json", write)
                    ->Args({terms, languages})
                    ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}}

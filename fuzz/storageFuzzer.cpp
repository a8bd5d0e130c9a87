/* Hidden folders with a commit as strangers may have made them, in a project
   beside a folder that has nothing to do with it */

#include <Corrade/Containers/StringStl.h>
#include <fuzzer/FuzzedDataProvider.h>

#include "SampleProject.h"
#include "storage/Storage.h"

using namespace OrrelinEngine;
using namespace OrrelinEngine::Host;

/* Staged files are named after the number */
static Containers::String record(FuzzedDataProvider& data) {
    const Version versions[]{{}, versionOf("old"), versionOf("new")};
    CommitRecord out{7, data.ConsumeIntegralInRange(0u, 3u), {}};
    for(const char* const key:
        {"", "../outside/canary.json", "de.json", "it.json"})
        if(data.ConsumeBool())
            out.changes.push_back({key, data.PickValueInArray(versions),
                data.PickValueInArray(versions)});
    return toText(out);
}

/* A file, a link or nothing */
static void put(FuzzedDataProvider& data, const std::string& file,
    const std::string& content) {
    const auto kind = data.ConsumeIntegralInRange(0, 5);
    if(kind == 0)
        std::filesystem::create_symlink("../../outside/canary.json", file);
    else if(kind < 5)
        std::ofstream{file} << content;
}

extern "C" int LLVMFuzzerTestOneInput(
    const std::uint8_t* bytes, std::size_t size) {
    static const TemporaryFolder folder;
    const std::string museum = folder.path("museum/");
    FuzzedDataProvider data{bytes, size};
    std::filesystem::remove_all(museum);
    for(const char* const name: {"outside/canary.json", "museum/project.json",
            "museum/languages/de.json"})
        folder.write(name, "old");
    put(data, museum + "languages/it.json", "old");
    const std::string prefix{stagedPrefix(7)}, text{record(data)};
    const std::string contents[]{text, "new", data.ConsumeRandomLengthString()};
    for(const std::string hidden: {".orrelin/", "languages/.orrelin/"}) {
        std::filesystem::create_directory(museum + hidden);
        for(const std::string& name:
            {std::string{"commit"}, std::string{"commit.new"},
                std::string{"lock"}, prefix + "0", prefix + "1", prefix + "2"})
            put(data, museum + hidden + name, data.PickValueInArray(contents));
    }

    Storage storage;
    if(storage.open(museum + "project.json").isEmpty() &&
        storage.lock("fuzz", std::chrono::milliseconds{0}).isEmpty() &&
        storage.setLanguagesFolder(museum + "languages").isEmpty() &&
        storage.write(museum + "languages/it.json", "own").isEmpty())
        storage.commit();
    Fuzz::expect(folder.read("outside/canary.json") == "old" &&
        std::filesystem::remove(folder.path("outside/canary.json")) &&
        std::filesystem::is_empty(folder.path("outside")));
    return 0;
}

/* A command of the storage and nothing else, for scripts/check-kills:

    storageDriver show PROJECT LANGUAGES             prints all files
    storageDriver finish PROJECT LANGUAGES           writes nothing
    storageDriver apply PROJECT LANGUAGES [NAME=CONTENT | NAME-]...
    storageDriver append PROJECT LANGUAGES WORD      adds it to two files

   The name of the project file is empty. Exits with 2 and a line if it
   fails. */

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>
#include <Corrade/Containers/StringStl.h>

#include "host/storage/Storage.h"

namespace {

using namespace OrrelinEngine;
using namespace OrrelinEngine::Host;

typedef std::vector<std::string> Words;

int fail(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.data());
    return 2;
}

std::string line(const std::string& name, const FileContent& file) {
    return name + (file.exists ? "=" + std::string{file.content} : "-") + "\n";
}

std::string start(Storage& storage, const Words& words, bool writes) {
    Containers::String fault = storage.open(words[1]);
    if(fault.isEmpty() && writes)
        fault = storage.lock(words[0]);
    if(fault.isEmpty())
        fault = storage.setLanguagesFolder(words[2]);
    return std::string{fault};
}

std::string allFiles(Storage& storage, const Words& words, std::string& out) {
    FileContent file = storage.read(words[1]);
    out = line("", file);
    std::vector<Containers::String> names;
    std::string fault{storage.list(words[2], names)};
    for(const Containers::String& name: names) {
        file = storage.read(words[2] + "/" + std::string{name});
        out += line(std::string{name}, file);
        if(fault.empty())
            fault = std::string{file.fault};
    }
    return fault;
}

int show(const Words& words) {
    for(int i = 0; i != 1000; ++i) {
        Storage storage;
        std::string out;
        std::string fault = start(storage, words, false);
        if(fault.empty())
            fault = allFiles(storage, words, out);
        if(!storage.changed().isEmpty())
            continue;
        if(!fault.empty())
            return fail(fault);
        std::fputs(out.data(), stdout);
        return 0;
    }
    return fail("it changes all the time");
}

std::string put(
    Storage& storage, const Words& words, const std::string& change) {
    const std::size_t at = change.find_first_of("=-");
    const std::string name = change.substr(0, at);
    const std::string file = name.empty() ? words[1] : words[2] + "/" + name;
    if(change[at] == '-')
        return std::string{storage.remove(file)};
    if(name.size() < 4 || name.substr(name.size() - 4) != ".zip")
        return std::string{storage.write(file, change.substr(at + 1))};
    std::FILE* const out = std::fopen(storage.archivePath().data(), "wb");
    const bool isWritten = out && std::fputs(change.data() + at + 1, out) >= 0;
    if((out && std::fclose(out) != 0) || !isWritten)
        return "can't write the archive";
    return std::string{storage.writeArchive(file)};
}

std::string append(Storage& storage, const Words& words) {
    for(const std::string& file: {words[1], words[2] + "/de.json"}) {
        const FileContent old = storage.read(file);
        std::string fault{old.fault};
        if(fault.empty())
            fault =
                std::string{storage.write(file, old.content + words[3] + "\n")};
        if(!fault.empty())
            return fault;
    }
    return {};
}

int write(const Words& words) {
    Storage storage;
    std::string out;
    std::string fault = start(storage, words, true);
    if(fault.empty() && words[0] != "finish")
        fault = allFiles(storage, words, out);
    if(words[0] == "append" && fault.empty())
        fault = append(storage, words);
    for(std::size_t i = 3; words[0] == "apply" && i < words.size(); ++i)
        if(fault.empty())
            fault = put(storage, words, words[i]);
    if(fault.empty())
        fault = std::string{storage.commit()};
    return fault.empty() ? 0 : fail(fault);
}

}

int main(int argc, char** argv) {
    const Words words{argv + 1, argv + argc};
    if(words.size() < 3)
        return 1;
    return words[0] == "show" ? show(words) : write(words);
}

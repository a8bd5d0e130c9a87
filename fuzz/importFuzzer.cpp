/* Bytes of a language file, the first of which chooses its language */

#include "SampleProject.h"

extern "C" int LLVMFuzzerTestOneInput(
    const std::uint8_t* data, std::size_t size) {
    using namespace OrrelinEngine;

    if(!size)
        return 0;
    static const TemporaryFolder folder;
    /* The default language, another one, one to be added, none */
    const char* const names[]{"en.json", "de.json", "fr.json", "xx.json"};
    const std::string file = folder.path(names[data[0] % 4]);
    Fuzz::writeFile(file, data + 1, size - 1);
    Fuzz::importAndCheck(folder.path());
    std::filesystem::remove(file);
    return 0;
}

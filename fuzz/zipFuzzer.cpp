/* Bytes of an archive of language files */

#include "SampleProject.h"

extern "C" int LLVMFuzzerTestOneInput(
    const std::uint8_t* data, std::size_t size) {
    using namespace OrrelinEngine;

    static const TemporaryFolder folder;
    const std::string file = folder.path("Sample.zip");
    Fuzz::writeFile(file, data, size);
    Fuzz::importAndCheck(file);
    return 0;
}

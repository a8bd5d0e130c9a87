/* Bytes of a record, which may be the work of a merge or of a stranger */

#include <cstdlib>

#include "Tracking/TranslationRecord.h"

using namespace OrrelinEngine;
using Tracking::TranslationRecord;

namespace {

void check(bool isFine) {
    if(!isFine)
        std::abort();
}

/* Describes the same files anew, as each command does that writes */
void describe(TranslationRecord& record) {
    const std::uint32_t origin = record.origin("de", "a", "Eins", "One");
    check(origin);
    record.beginSources("en");
    record.addSource("a", "One");
    record.keepSource("b");
    record.beginTranslations("de");
    record.addTranslation("a", "Eins", origin);
    record.addMissing("b");
    record.renew();
    check(record.origin("de", "a", "Eins", "One") == origin);
    check(record.compare("a", "One", "Other") ==
        Tracking::SourceState::ChangedInProject);
    check(!record.hasTranslation("de", "b", ""));
}

}

extern "C" int LLVMFuzzerTestOneInput(
    const std::uint8_t* data, std::size_t size) {
    TranslationRecord record;
    if(!record.parse({reinterpret_cast<const char*>(data), size})) {
        check(record.isEmpty());
        return 0;
    }
    for(int i = 0; i != 2; ++i) {
        const Containers::String content = record.write();
        check(record.parse(content));
        check(record.write() == content);
        describe(record);
    }
    return 0;
}

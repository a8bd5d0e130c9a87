#include "editor/ProjectSection.h"

#include <rapidjson/document.h>

namespace OrrelinEngine {

ProjectSection::ProjectSection(ProjectFile& file, Containers::StringView name):
    RecordAccess{file, "/" + name} {}

ValueAccess ProjectSection::operator[](Containers::StringView name) const {
    return RecordAccess::operator[](name);
}

ValueAccess ProjectSection::addResource(Containers::StringView name) {
    ValueAccess record = operator[](name);
    if(!record.hasValue())
        record.writeValue().SetObject();
    return record;
}

}

#include "ComponentTypes.h"

#include <vector>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "Messages.h"
#include "session/EditorSession.h"
#include "editor/JavaScriptManager.h"
#include "editor/ProjectFile.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace Host {

namespace {

typedef Containers::Pair<Containers::StringView, unsigned short> Parameter;

/* Only strings are told from the others */
const Parameter TypeCodes[]{{"string", Data::StringParamType}, {"bool", 1},
    {"int", 2}, {"float", 3}, {"color", 4}, {"object", 5}, {"asset", 6}};

Containers::String typeNames() {
    Containers::String out;
    for(const Parameter& type: TypeCodes)
        out = out.isEmpty() ? Containers::String{type.first()}
                            : out + ", " + type.first();
    return out;
}

Containers::Optional<unsigned short> typeCode(const JsonValue& name) {
    if(name.IsString())
        for(const Parameter& type: TypeCodes)
            if(type.first() == stringOf(name))
                return type.second();
    return {};
}

}

bool addComponentTypes(EditorSession& session, Containers::StringView file,
    Containers::StringView content) {
    /* Read as the project is, with the place of a fault if there is one */
    EditorSession reader;
    if(!succeedsOrFails([&] { return reader.open(file, content); }))
        return false;

    for(const auto& type: reader.projectFile().document.GetObject()) {
        if(!type.value.IsObject()) {
            fail(Utility::format("{}: '{}' is no object of parameters", file,
                stringOf(type.name)));
            return false;
        }
        std::vector<Parameter> parameters;
        for(const auto& parameter: type.value.GetObject()) {
            const auto code = typeCode(parameter.value);
            if(!code) {
                fail(Utility::format(
                    "{}: parameter '{}' of '{}' has the unknown type '{}'; there "
                    "are {}",
                    file, stringOf(parameter.name), stringOf(type.name),
                    parameter.value.IsString() ? stringOf(parameter.value)
                                               : "(no text)",
                    typeNames()));
                return false;
            }
            parameters.emplace_back(stringOf(parameter.name), *code);
        }
        if(!succeedsOrFails([&] {
               return session.addScriptType(
                   stringOf(type.name), {parameters.data(), parameters.size()});
           }))
            return false;
    }
    return true;
}

}}

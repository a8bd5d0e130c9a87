#include "ComponentTypes.h"

#include <vector>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "editor/JavaScriptManager.h"
#include "editor/ProjectFile.h"
#include "session/EditorSession.h"
#include "session/projectJson.h"
#include "shared/Implementation/stringOf.h"
#include "terminal/Messages.h"

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

/* Reads the descriptions of types, and knows where it is for faults */
class Descriptions {
public:
    explicit Descriptions(
        Containers::StringView file, Containers::StringView content):
        _file{file},
        _content{content} {}

    bool add(EditorSession& session, const JsonValue& types);

private:
    bool readParameters(
        Containers::StringView type, const JsonValue& description);
    bool fail(const Containers::String& fault) const {
        Host::fail(Utility::format("{}: {}", _file, fault));
        return false;
    }
    Containers::String typePlace() const {
        return memberPlace(_content, {&_position, 1});
    }
    Containers::String parameterPlace() const {
        const std::size_t positions[]{_position, _parameters.size()};
        return memberPlace(_content, positions);
    }

    Containers::StringView _file, _content;
    /* Of the type among all */
    std::size_t _position = 0;
    std::vector<Parameter> _parameters;
};

bool Descriptions::add(EditorSession& session, const JsonValue& types) {
    for(const auto& type: types.GetObject()) {
        const Containers::StringView name = stringOf(type.name);
        if(!readParameters(name, type.value) || !succeedsOrFails([&] {
               return session.addScriptType(
                   name, {_parameters.data(), _parameters.size()});
           }))
            return false;
        ++_position;
    }
    return true;
}

bool Descriptions::readParameters(
    Containers::StringView type, const JsonValue& description) {
    _parameters.clear();
    if(!description.IsObject())
        return fail(Utility::format(
            "'{}' at {} is no object of parameters", type, typePlace()));
    for(const auto& parameter: description.GetObject()) {
        const auto code = typeCode(parameter.value);
        if(!code)
            return fail(Utility::format(
                "parameter '{}' of '{}' at {} has the unknown type '{}'; there "
                "are {}",
                stringOf(parameter.name), type, parameterPlace(),
                parameter.value.IsString() ? stringOf(parameter.value)
                                           : "(no text)",
                typeNames()));
        _parameters.emplace_back(stringOf(parameter.name), *code);
    }
    return true;
}

}

bool addComponentTypes(EditorSession& session, Containers::StringView file,
    Containers::StringView content) {
    /* Read as the project is, with the place of a fault if there is one */
    EditorSession reader;
    return succeedsOrFails([&] { return reader.open(file, content); }) &&
        Descriptions{file, content}.add(session, reader.projectFile().document);
}

}}

#ifndef Orrelin_test_vectors_h
#define Orrelin_test_vectors_h

#include <fstream>
#include <Corrade/Containers/StringView.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* One member of the file with results measured on the actual libraries */
inline const rapidjson::Value& vectors(const char* name) {
    static const rapidjson::Document document = [] {
        std::ifstream file{TEST_DATA "/utility-libraries.json"};
        rapidjson::IStreamWrapper stream{file};
        rapidjson::Document out;
        out.ParseStream(stream);
        return out;
    }();
    if(!document.IsObject() || !document.HasMember(name)) {
        ADD_FAILURE() << "no " << name << " in "
                      << TEST_DATA "/utility-libraries.json";
        std::abort();
    }
    return document[name];
}

inline Containers::StringView stringView(const rapidjson::Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

}

/* Found by GoogleTest to print the views */
namespace Corrade { namespace Containers {

inline void PrintTo(const StringView& value, std::ostream* out) {
    out->write(value.data(), value.size());
}

}}

#endif

#ifndef Orrelin_test_JsonText_h
#define Orrelin_test_JsonText_h

#include <string>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

inline std::string jsonText(const JsonValue& value) {
    rapidjson::StringBuffer out;
    rapidjson::Writer<rapidjson::StringBuffer> writer{out};
    value.Accept(writer);
    return {out.GetString(), out.GetSize()};
}

inline JsonDocument jsonDocument(const std::string& text) {
    JsonDocument out;
    out.Parse(text.data(), text.size());
    return out;
}

}

#endif

#ifndef Orrelin_host_JsonList_h
#define Orrelin_host_JsonList_h

#include <Corrade/Containers/StringView.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "Terminal.h"

namespace OrrelinEngine { namespace Host {

/* Output for scripts: an array of objects */
class JsonList {
public:
    explicit JsonList(): _writer{_out} {
        _writer.SetIndent(' ', 2);
        _writer.StartArray();
    }

    void beginObject() { _writer.StartObject(); }
    void endObject() { _writer.EndObject(); }

    /* A null view is written as null */
    void add(const char* key, Containers::StringView value) {
        _writer.Key(key);
        if(value.data())
            _writer.String(value.data(), unsigned(value.size()));
        else
            _writer.Null();
    }
    void add(const char* key, bool value) {
        _writer.Key(key);
        _writer.Bool(value);
    }
    void add(const char* key, std::size_t value) {
        _writer.Key(key);
        _writer.Uint64(value);
    }
    void add(const char* key, double value) {
        _writer.Key(key);
        _writer.Double(value);
    }

    void print() {
        _writer.EndArray();
        printJson({_out.GetString(), _out.GetSize()});
    }

private:
    rapidjson::StringBuffer _out;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> _writer;
};

}}

#endif

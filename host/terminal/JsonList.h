#ifndef Orrelin_host_terminal_JsonList_h
#define Orrelin_host_terminal_JsonList_h

#include <Corrade/Containers/StringView.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "Terminal.h"

namespace OrrelinEngine { namespace Host {

/* Output for scripts: an array of objects. Large ones are printed part by part
   as they are added. */
class JsonList {
public:
    explicit JsonList(): _writer{_out} {
        _writer.SetIndent(' ', 2);
        _writer.StartArray();
    }

    void beginObject() { _writer.StartObject(); }
    void endObject() {
        _writer.EndObject();
        if(_out.GetSize() > PartSize)
            flush();
    }

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
        _out.Put('\n');
        flush();
    }

private:
    static constexpr std::size_t PartSize = 1 << 16;

    void flush() {
        printJson({_out.GetString(), _out.GetSize()});
        _out.Clear();
    }

    rapidjson::StringBuffer _out;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> _writer;
};

}}

#endif

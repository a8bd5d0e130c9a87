#include "editor/RapidJsonDebug.h"

#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>
#include <rapidjson/writer.h>

namespace rapidjson {

namespace {

constexpr std::size_t MaxSize = 1000;

/* Keeps the first characters and drops all that don't fit */
struct BoundedStream {
    typedef char Ch;

    void Put(char c) {
        if(!isFull())
            data[size] = c;
        ++size;
    }
    void Flush() {}

    bool isFull() const { return size > MaxSize; }

    char data[MaxSize + 1];
    std::size_t size = 0;
};

typedef Writer<BoundedStream, UTF8<>, UTF8<>, CrtAllocator, kWriteNanAndInfFlag>
    JsonWriter;

/* Stops when the stream is full. Each level of a value writes a character at
   least, so that's before a deep one uses up the call stack. */
class BoundedWriter: public JsonWriter {
public:
    explicit BoundedWriter(BoundedStream& stream):
        JsonWriter{stream}, _stream(stream) {}

    bool StartObject() {
        return !_stream.isFull() && JsonWriter::StartObject();
    }
    bool StartArray() { return !_stream.isFull() && JsonWriter::StartArray(); }

private:
    BoundedStream& _stream;
};

}

Corrade::Utility::Debug& operator<<(
    Corrade::Utility::Debug& debug, const OrrelinEngine::JsonValue& value) {
    BoundedStream stream;
    BoundedWriter writer{stream};
    value.Accept(writer);

    if(!stream.isFull())
        return debug << Corrade::Containers::StringView{
                   stream.data, stream.size};
    /* Back to the beginning of a character that the limit would cut */
    std::size_t size = MaxSize;
    while(
        size && (static_cast<unsigned char>(stream.data[size]) & 0xc0) == 0x80)
        --size;
    return debug << Corrade::Containers::StringView{stream.data, size}
                 << Corrade::Utility::Debug::nospace << "...";
}

}

/* Bytes as operations of the change manager, performed by it and by a
   reference that is too simple to be wrong */

#include <cstdio>

#include "ChangeManagerComparison.h"
#include "SampleProject.h"

using namespace OrrelinEngine;

namespace {

constexpr const char* Document =
    R"({"a":{"b":{"list":[1,2,3],"c":"x"}},"list":["x",{"a":1},[2]]})";
constexpr const char* Names[]{"push", "push", "drag", "drag", "remove",
    "dragRemove", "append", "beginGroup", "commit", "undo", "redo", "markSave",
    "forceNew"};
constexpr const char* Segments[]{"a", "b", "c", "list", "0", "1", "2", "5", "-",
    "-1", "01", "~0", "~1", "", "4294967296"};
constexpr const char* Values[]{"1", "null", "\"x\"", "[]", "{}", "[1,2]",
    "[0.5,2]", R"({"a":1})", R"({"0":[1]})"};

class Bytes {
public:
    explicit Bytes(const std::uint8_t* data, std::size_t size):
        _at{data}, _end{data + size} {}

    explicit operator bool() const { return _at != _end; }
    std::size_t next() { return _at == _end ? 0 : *_at++; }
    template<std::size_t n> const char* oneOf(const char* const (&values)[n]) {
        return values[next() % n];
    }

private:
    const std::uint8_t* _at;
    const std::uint8_t* _end;
};

ChangeOperation operation(Bytes& bytes) {
    ChangeOperation out{bytes.oneOf(Names), {}, {}};
    /* Appending takes a string */
    out.value = out.name == "append" ? "\"x\"" : bytes.oneOf(Values);
    for(std::size_t depth = 1 + bytes.next() % 4; depth; --depth)
        out.path = out.path + '/' + bytes.oneOf(Segments);
    return out;
}

}

extern "C" int LLVMFuzzerTestOneInput(
    const std::uint8_t* data, std::size_t size) {
    Bytes bytes{data, size};
    Comparison comparison{Document};
    for(std::size_t i = 0; bytes && i != 200; ++i) {
        const ChangeOperation next = operation(bytes);
        /* Undo and redo with a group open are contract violations */
        if(comparison.reference.group != -1 &&
            (next.name == "undo" || next.name == "redo"))
            continue;
        const std::string difference = comparison.perform(next);
        if(comparison.reference.violated)
            break;
        if(!difference.empty()) {
            std::fprintf(
                stderr, "%s: %s\n", next.text().data(), difference.data());
            Fuzz::expect(false);
        }
    }
    return 0;
}

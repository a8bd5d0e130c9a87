/* Random operations, performed by the change manager and by a reference that
   is too simple to be wrong, compared after each of them.

   The number of operations and the first seed are taken from the environment
   variables MODEL_OPERATIONS and MODEL_SEED. */

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

#include "ChangeManagerComparison.h"
#include "Random.h"

namespace OrrelinEngine { namespace {

constexpr const char* Documents[]{
    R"({})",
    R"({"a":{"b":{"list":[1,2,3],"c":"x"}},"list":["x","y","z"]})",
    R"({"objects":{"0":{"list":[{"a":1},{"a":2}],"c":[0.5,1.5]},)"
    R"("1":{"a":[]}},"a":5,"list":[[1,[2]],{}]})",
    /* Members that look like elements */
    R"({"objects":{"a":{"-5":1,"-":{"007":1}},"b":{"1700000000000":{"-":1}},)"
    R"("c":{"-":1,"0":1,"2":{"-5":1}},"-":{"1":{"01":1},"0":[1]}}})",
};
constexpr const char* Segments[]{"a", "b", "c", "list", "objects", "~0", "~1",
    "", "0", "1", "2", "3", "5", "-", "-1", "-0", "01", "00", "4294967296",
    "99999999999999999999", "-5", "007", "1700000000000"};
constexpr std::size_t Sizes[]{0, 1, 8, 15, 16, 17, 30, 32, 33, 44, 45, 46, 47,
    48, 49, 50, 51, 52, 63, 64, 65, 127, 128, 129, 200};
constexpr const char* Values[]{"1", "2.5", "null", "true", "\"x\"", "\"y\"",
    "[]", "{}", "[1,2,3]", "[0.5,2,7]", "[\"x\",[1]]", R"({"a":1})",
    R"({"0":"x"})", R"({"a":{"list":[1,2]},"b":[]})"};

std::size_t sizeOf(const JsonValue& value) {
    return value.IsObject() ? value.MemberCount()
        : value.IsArray()   ? value.Size()
                            : 0;
}

std::string nameAt(const JsonValue& object, std::size_t i) {
    return object.MemberBegin()[std::ptrdiff_t(i)].name.GetString();
}

const JsonValue& childOf(const JsonValue& value, std::size_t i) {
    return value.IsArray() ? value[rapidjson::SizeType(i)]
                           : value.MemberBegin()[std::ptrdiff_t(i)].value;
}

std::string escaped(const std::string& name) {
    std::string out;
    for(const char c: name)
        out += c == '~' ? "~0" : c == '/' ? "~1" : std::string{c};
    return out;
}

/* Edits an object in ways that nothing announces. New members are named like
   the object, with a number. */
class DirectEdit {
public:
    typedef JsonValue::MemberIterator Iterator;

    explicit DirectEdit(JsonDocument& d, const ChangeOperation& operation):
        document(d), random{std::strtoull(operation.value.data(), nullptr, 10)},
        _path{operation.path}, _pointer{_path.data(), _path.size()} {
        if(!count())
            add(object(), newName());
    }

    JsonValue& object() { return objectAt(_path); }

    /* Creating one of them moves what stands beside it */
    JsonValue& other() {
        object();
        return objectAt(_path + '2');
    }

    std::size_t count() { return object().MemberCount(); }

    Iterator some() {
        return object().MemberBegin() + std::ptrdiff_t(random.below(count()));
    }

    /* Now and then the last one stays where it is */
    Iterator endOfSome() {
        return object().MemberEnd() - std::ptrdiff_t(random.below(2));
    }

    /* The same one, or one of those where look-ups may change their way */
    std::size_t otherCount() {
        if(random.oneIn(500))
            return 2000 + random.below(6000);
        return random.oneIn(2) ? count() : random.oneOf(Sizes);
    }

    std::string name(std::size_t i) {
        return _pointer.GetTokens()[_pointer.GetTokenCount() - 1].name +
            std::to_string(i);
    }

    std::string newName() {
        std::string out;
        do
            out = name(random.below(count() * 2 + 32));
        while(object().HasMember(out.data()));
        return out;
    }

    void add(JsonValue& to, const std::string& name) {
        to.AddMember(JsonValue{name.data(), document.GetAllocator()},
            JsonValue{int(random.below(9))}, document.GetAllocator());
    }

    JsonValue filled(JsonValue out, std::size_t size) {
        const std::size_t first = random.below(32);
        for(std::size_t i = 0; i != size; ++i)
            add(out, name(first + i));
        return out;
    }

    JsonDocument& document;
    Random random;

private:
    JsonValue& objectAt(const std::string& path) {
        JsonValue& out =
            rapidjson::GenericPointer<JsonValue>{path.data(), path.size()}
                .Create(document);
        return out.IsObject() ? out : out.SetObject();
    }

    std::string _path;
    rapidjson::GenericPointer<JsonValue> _pointer;
};

/* Each at least one member to begin with */
const struct {
    const char* name;
    void (*make)(DirectEdit&);
} DirectEdits[]{
    {"add", [](auto& e) { e.add(e.object(), e.newName()); }},
    {"RemoveMember", [](auto& e) { e.object().RemoveMember(e.some()); }},
    {"EraseMember", [](auto& e) { e.object().EraseMember(e.some()); }},
    {"eraseSome",
        [](auto& e) {
            const auto range = std::minmax({e.some(), e.endOfSome()});
            e.object().EraseMember(range.first, range.second);
        }},
    {"rename",
        [](auto& e) {
            const std::string name = e.newName();
            e.some()->name.SetString(name.data(), e.document.GetAllocator());
        }},
    {"refill",
        [](auto& e) {
            const std::size_t size = e.otherCount();
            e.object().RemoveAllMembers();
            e.object() = e.filled(std::move(e.object()), size);
        }},
    {"swapWithOther",
        [](auto& e) {
            const std::size_t size = e.otherCount();
            JsonValue& other = e.other();
            if(other.ObjectEmpty())
                other = e.filled(JsonValue{rapidjson::kObjectType}, size);
            other.Swap(e.object());
        }},
    {"moveAway",
        [](auto& e) {
            JsonValue& other = e.other();
            other = e.object();
            e.object().SetObject();
        }},
    {"exchangeMembers",
        [](auto& e) {
            const auto a = e.some(), b = e.some();
            a->name.Swap(b->name);
            a->value.Swap(b->value);
        }},
    {"sort",
        [](auto& e) {
            std::sort(e.object().MemberBegin(), e.endOfSome(),
                [](const auto& a, const auto& b) {
                    return std::strcmp(a.name.GetString(), b.name.GetString()) <
                        0;
                });
        }},
    {"parse", [](auto& e) { e.document.Parse(jsonText(e.document).data()); }},
};

std::string perform(Comparison& comparison, const ChangeOperation& operation) {
    for(const auto& i: DirectEdits)
        if(operation.name == i.name)
            return comparison.edit([&](JsonDocument& document) {
                DirectEdit edit{document, operation};
                i.make(edit);
            });
    return comparison.perform(operation);
}

/* Anything at any path: missing parents, absent removals, scalars in the way,
   indices out of range */
class AnyOperations {
public:
    explicit AnyOperations(Random& random): _random(random) {}

    std::string document() { return _random.oneOf(Documents); }

    ChangeOperation next(ChangeManagerReference& reference) {
        constexpr const char* names[]{"push", "push", "push", "drag", "drag",
            "drag", "drag", "remove", "remove", "dragRemove", "append",
            "beginGroup", "commit", "undo", "undo", "redo", "redo", "markSave",
            "forceNew", "handle"};
        ChangeOperation out{_random.oneOf(names), {}, _random.oneOf(Values)};
        if(_random.oneIn(200))
            out.name = "reset";
        if(_random.oneIn(10))
            out.name = _random.oneIn(4) ? "write" : "read";
        if(reference.group != -1 && (out.name == "undo" || out.name == "redo"))
            out.name = "commit";

        if(out.name == "handle") {
            out.path = _random.oneOf(Segments);
            if(out.path.empty())
                out.path = "a";
            out.value = std::to_string(_handlers++);
        } else
            out.path = path(reference);
        if(out.name == "append")
            out.value = R"("s")";
        return out;
    }

private:
    std::string path(ChangeManagerReference& reference) {
        std::string out;
        do {
            out = !_recent.empty() && _random.below(3)
                ? _recent[_random.below(_recent.size())]
                : walk(reference.document);
        } while(!isAllowed(reference, out));
        _recent.push_back(out);
        if(_recent.size() > 6)
            _recent.erase(_recent.begin());
        return out;
    }

    std::string walk(const JsonValue& document) {
        std::string out;
        const JsonValue* at = &document;
        while(at && (out.empty() || _random.below(6))) {
            const std::size_t size = sizeOf(*at);
            if(!size || _random.oneIn(6)) {
                out += std::string{"/"} + _random.oneOf(Segments);
                if(_random.below(3))
                    return out;
                at = size ? &childOf(*at, _random.below(size)) : nullptr;
                continue;
            }
            const std::size_t i = _random.below(size);
            out += '/' +
                (at->IsObject() ? escaped(nameAt(*at, i)) : std::to_string(i));
            at = &childOf(*at, i);
        }
        return out;
    }

    /* Else it's a programming error and only ends the sequence */
    static bool isAllowed(
        ChangeManagerReference& reference, const std::string& path) {
        const auto [parentPath, segment] = splitLast(path);
        const JsonValue* const parent = reference.find(parentPath);
        return !parent || parent->IsObject() || parent->IsArray() ||
            !isIndex(segment);
    }

    Random& _random;
    std::vector<std::string> _recent;
    int _handlers = 0;
};

/* An object whose size goes up and down across those where look-ups may change
   their way, with another one beside it. In between come direct edits and
   accessors, many of them or few or none. */
class SizeOperations {
public:
    explicit SizeOperations(Random& random):
        _random(random), _object{random.oneOf(Objects)},
        _edits{random.oneOf(Rates)}, _reads{random.oneOf(Rates)},
        _repeats{random.below(8)}, _size{random.oneOf(Sizes)} {}

    std::string document() {
        JsonDocument out{rapidjson::kObjectType};
        DirectEdit edit{out, ChangeOperation{"", _object}};
        edit.object() = edit.filled(JsonValue{rapidjson::kObjectType}, _size);
        return jsonText(out);
    }

    ChangeOperation next(ChangeManagerReference& reference) {
        constexpr const char* accesses[]{"read", "read", "write", "append"};
        constexpr const char* names[]{"drag", "drag", "dragRemove",
            "beginGroup", "commit", "undo", "undo", "redo", "redo", "markSave",
            "forceNew", "promise"};
        if(reference.handlers.empty())
            return ChangeOperation{"handle", split(_object)[1], "all"};
        if(_random.oneIn(_edits))
            return ChangeOperation{_random.oneOf(DirectEdits).name, _object,
                std::to_string(_random.below(1000000))};

        const JsonValue* const object = reference.find(_object);
        const std::size_t size = object ? sizeOf(*object) : 0;
        if(_random.oneIn(200))
            _size = _random.oneOf(Sizes);
        if(_random.oneIn(_reads))
            return ChangeOperation{_random.oneOf(accesses),
                path(reference, _random.oneIn(2)), "\"s\""};
        if(_random.oneIn(400))
            return ChangeOperation{_random.oneIn(2) ? "push" : "remove",
                _object, _random.oneIn(2) ? "{}" : R"({"a":1,"b":{"a":2}})"};
        if(_random.oneIn(2)) {
            const bool grows = size + 4 < _size + _random.below(9);
            return ChangeOperation{grows ? "push" : "remove",
                path(reference, !grows), _random.oneOf(Values)};
        }

        ChangeOperation out{_random.oneIn(300) ? "reset" : _random.oneOf(names),
            path(reference, _random.below(4)), _random.oneOf(Values)};
        if(reference.group != -1 && (out.name == "undo" || out.name == "redo"))
            out.name = "commit";
        return out;
    }

private:
    /* Members are named alike: short, long, of digits, and to be escaped */
    static constexpr const char* Objects[]{"/n", "/objects/n", "/objects/",
        "/objects/of-11-bytes", "/objects/a-name-of-more-bytes", "/a/~1"};
    static constexpr std::size_t Rates[]{2, 16, 1000000, 1000000};

    /* Of one that's there, or of any */
    std::string path(ChangeManagerReference& reference, bool present) {
        std::string out = _object + (_random.oneIn(8) ? "2" : "") + '/';
        const JsonValue* const object = reference.find(splitLast(out).first);
        const std::size_t size =
            object && object->IsObject() ? sizeOf(*object) : 0;
        if(present && size)
            /* The last one more often */
            out += escaped(nameAt(*object,
                std::min(size - 1, _random.below(size + size / 8 + 1))));
        else {
            /* One that was there, more often than not */
            std::size_t i = _random.below(size + 4);
            out += splitLast(_object).second;
            while(reference.find(out + std::to_string(i)))
                ++i;
            out += std::to_string(i);
        }
        if(_random.oneIn(8))
            out += _random.oneIn(2) ? "/a" : "/a/b";
        if(!_recent.empty() && _random.below(8) < _repeats)
            return _recent[_random.below(_recent.size())];
        if(_recent.size() < 6)
            _recent.push_back(out);
        else
            _recent[_random.below(_recent.size())] = out;
        return out;
    }

    Random& _random;
    std::string _object;
    std::size_t _edits, _reads;
    std::size_t _repeats;
    std::size_t _size;
    std::vector<std::string> _recent;
};

std::uint64_t currentSeed;

template<class Operations> void compare() {
    std::signal(SIGABRT, [](int) {
        std::fprintf(stderr, "Aborted with MODEL_SEED=%llu\n",
            static_cast<unsigned long long>(currentSeed));
    });
    const std::uint64_t count = environment("MODEL_OPERATIONS", 100000);
    currentSeed = environment("MODEL_SEED", 1);
    for(std::uint64_t done = 0; done < count; ++currentSeed) {
        Random random{currentSeed};
        Operations operations{random};
        const std::string document = operations.document();
        std::string made = document + '\n';
        std::string difference;
        Comparison comparison{document};
        for(std::size_t left = 10 + random.below(600);
            left && difference.empty() && !comparison.reference.violated;
            --left, ++done) {
            const ChangeOperation next = operations.next(comparison.reference);
            made += next.text() + '\n';
            difference = perform(comparison, next);
        }
        ASSERT_EQ(difference, "") << "MODEL_SEED=" << currentSeed << '\n'
                                  << made;
    }
    std::signal(SIGABRT, SIG_DFL);
}

TEST(ChangeManagerModelTest, anyOperations) {
    compare<AnyOperations>();
}

TEST(ChangeManagerModelTest, sizes) {
    compare<SizeOperations>();
}

}}

/* Random operations, performed by the change manager and by a reference that
   is too simple to be wrong, compared after each of them.

   The number of operations and the first seed are taken from the environment
   variables MODEL_OPERATIONS and MODEL_SEED. */

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

#include "ChangeManagerComparison.h"
#include "Random.h"

namespace OrrelinEngine { namespace Test { namespace {

constexpr const char* Documents[]{
    R"({})",
    R"({"a":{"b":{"list":[1,2,3],"c":"x"}},"list":["x","y","z"]})",
    R"({"objects":{"0":{"list":[{"a":1},{"a":2}],"c":[0.5,1.5]},)"
    R"("1":{"a":[]}},"a":5,"list":[[1,[2]],{}]})",
};
constexpr const char* Segments[]{"a", "b", "c", "list", "objects", "~0", "~1",
    "", "0", "1", "2", "3", "5", "-", "-1", "-0", "01", "00", "4294967296",
    "99999999999999999999"};
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

/* An object that is large enough to be indexed */
std::string largeDocument() {
    std::string out = R"({"objects":{)";
    for(int i = 0; i != 60; ++i)
        out += (i ? ",\"" : "\"") + std::to_string(i) + R"(":{"a":1})";
    return out + R"(},"list":[1]})";
}

/* Anything at any path: missing parents, absent removals, scalars in the way,
   indices out of range */
class AnyOperations {
public:
    explicit AnyOperations(Random& random): _random(random) {}

    ChangeOperation next(ChangeManagerReference& reference) {
        constexpr const char* names[]{"push", "push", "push", "drag", "drag",
            "drag", "drag", "remove", "remove", "dragRemove", "append",
            "beginGroup", "commit", "undo", "undo", "redo", "redo", "markSave",
            "forceNew", "handle"};
        ChangeOperation out{_random.oneOf(names), {}, _random.oneOf(Values)};
        if(_random.oneIn(200))
            out.name = "reset";
        if(_random.oneIn(30) && reference.group == -1)
            out.name = "editDirectly";
        if(reference.group != -1 && (out.name == "undo" || out.name == "redo"))
            out.name = "commit";

        if(out.name == "handle") {
            out.path = _random.oneOf(Segments);
            if(out.path.empty())
                out.path = "a";
            out.value = std::to_string(_handlers++);
        } else
            out.path = path(reference, out.name == "editDirectly");
        if(out.name == "append")
            out.value = R"("s")";
        return out;
    }

private:
    std::string path(ChangeManagerReference& reference, bool inObject) {
        std::string out;
        do {
            out = !_recent.empty() && _random.below(3)
                ? _recent[_random.below(_recent.size())]
                : walk(reference.document);
        } while(!isAllowed(reference, out, inObject));
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

    static std::string escaped(const std::string& name) {
        std::string out;
        for(const char c: name)
            out += c == '~' ? "~0" : c == '/' ? "~1" : std::string{c};
        return out;
    }

    static bool isAllowed(ChangeManagerReference& reference,
        const std::string& path, bool inObject) {
        const auto [parentPath, segment] = splitLast(path);
        const JsonValue* const parent = reference.find(parentPath);
        /* Would be a programming error and only end the sequence */
        if(parent && !parent->IsObject() && !parent->IsArray() &&
            isIndex(segment))
            return false;
        return !inObject || !parent || parent->IsObject();
    }

    Random& _random;
    std::vector<std::string> _recent;
    int _handlers = 0;
};

/* What undoes exactly: no parents that are missing, emptied or replaced and no
   gaps in arrays. A drag changes the order of changes but not what could be
   redone, so where there are drags, all changes are drags, of members that
   don't contain each other, and nothing is undone before the end. */
class ReversibleOperations {
public:
    static constexpr const char* Document =
        R"({"objects":{"o1":{"id":1,"a":1,"b":"x"},"o2":{"id":2}},)"
        R"("lists":{"l1":["x","y","z"],"l2":[[1,2],3]}})";

    explicit ReversibleOperations(Random& random):
        _random(random), _drags{random.oneIn(2)} {}

    ChangeOperation next(ChangeManagerReference& reference) {
        constexpr const char* others[]{"beginGroup", "commit", "undo", "undo",
            "redo", "markSave", "forceNew"};
        if(_random.oneIn(3)) {
            ChangeOperation out{_random.oneOf(others)};
            const bool steps = out.name == "undo" || out.name == "redo";
            if(_drags && (steps || out.name == "forceNew"))
                out.name = "markSave";
            else if(steps && reference.group != -1)
                out.name = "commit";
            return out;
        }
        if(_drags || _random.oneIn(2))
            return member(reference.document);
        if(_random.oneIn(5))
            return ChangeOperation{"push",
                "/objects/new" + std::to_string(_records++), R"({"id":0})"};
        return element(reference.document);
    }

private:
    ChangeOperation member(const JsonValue& document) {
        constexpr const char* members[]{"a", "b", "c", "0"};
        const JsonValue& records = document["objects"];
        const bool removes = _random.oneIn(2);
        return ChangeOperation{_drags ? removes ? "dragRemove" : "drag"
                : removes             ? "remove"
                                      : "push",
            "/objects/" + nameAt(records, _random.below(sizeOf(records))) +
                '/' + _random.oneOf(members),
            _random.oneOf(Values)};
    }

    ChangeOperation element(const JsonValue& document) {
        const char* const name = _random.oneIn(2) ? "l1" : "l2";
        const std::string list = std::string{"/lists/"} + name;
        const std::size_t size = document["lists"][name].Size();
        const std::string some =
            list + '/' + std::to_string(_random.below(size));
        const std::string value = _random.oneOf(Values);
        switch(_random.below(5)) {
        case 0:
            return ChangeOperation{"push", some, value};
        case 1:
            return ChangeOperation{"push", list + "/-", value};
        case 2:
            return ChangeOperation{
                "push", list + '/' + std::to_string(size), value};
        case 3:
            return ChangeOperation{"append", list, R"("s")"};
        }
        return ChangeOperation{size == 1 ? "markSave" : "remove", some};
    }

    Random& _random;
    bool _drags;
    int _records = 0;
};

std::uint64_t currentSeed;

/* Whether undoing everything has to give the document back as it was is told
   by the last argument */
template<class Operations>
void compare(const std::vector<std::string>& documents, bool restores) {
    std::signal(SIGABRT, [](int) {
        std::fprintf(stderr, "Aborted with MODEL_SEED=%llu\n",
            static_cast<unsigned long long>(currentSeed));
    });
    const std::uint64_t count = environment("MODEL_OPERATIONS", 100000);
    currentSeed = environment("MODEL_SEED", 1);
    for(std::uint64_t done = 0; done < count; ++currentSeed) {
        Random random{currentSeed};
        const std::string& document = documents[random.below(documents.size())];
        std::string made = document + '\n';
        std::string difference;
        Operations operations{random};
        Comparison comparison{document};
        for(std::size_t left = 10 + random.below(60);
            left && difference.empty() && !comparison.reference.violated;
            --left, ++done) {
            const ChangeOperation next = operations.next(comparison.reference);
            made += next.text() + '\n';
            difference = comparison.perform(next);
        }
        if(restores && difference.empty() && !comparison.reference.violated)
            difference = comparison.undoAndRedoAll(document);
        ASSERT_EQ(difference, "") << "MODEL_SEED=" << currentSeed << '\n'
                                  << made;
    }
    std::signal(SIGABRT, SIG_DFL);
}

TEST(ChangeManagerModelTest, anyOperations) {
    std::vector<std::string> documents{
        std::begin(Documents), std::end(Documents)};
    documents.push_back(largeDocument());
    compare<AnyOperations>(documents, false);
}

TEST(ChangeManagerModelTest, undoRestores) {
    compare<ReversibleOperations>({ReversibleOperations::Document}, true);
}

}}}

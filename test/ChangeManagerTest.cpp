#include <algorithm>
#include <string>
#include <vector>
#include <gtest/gtest.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <Magnum/Math/Vector3.h>

#include "ChangeManagerComparison.h"

namespace OrrelinEngine { namespace Test { namespace {

/* A document and what is done to it. After the arrow is what the handlers of
   "a", "list", "objects" and "~1" are told, then whether all is saved; a
   document in between is what there has to be. */
struct Case {
    const char *name, *transcript;
};

/* The transcript of the same operations, done now. That the reference differs
   after one of them is told, too. */
std::string repeated(const std::string& transcript) {
    std::istringstream in{transcript};
    std::string line;
    std::getline(in, line);
    Comparison comparison{line};
    for(const char* segment: {"a", "list", "objects", "~1"})
        comparison.perform(ChangeOperation{"handle", segment, "=>"});

    std::string out = line + '\n';
    while(std::getline(in, line)) {
        if(line[0] == ' ')
            continue;
        if(line[0] == '{') {
            out += jsonText(comparison.reference.document) + '\n';
            continue;
        }
        line = line.substr(0, std::min(line.find(" =>"), line.find(", saved")));
        const ChangeOperation operation{line.data()};
        out += operation.text() + comparison.perform(operation);
        const char* separator = " ";
        for(const std::string& told: comparison.reference.notifications) {
            out += separator + told;
            separator = "\n    ";
        }
        out += comparison.reference.hasUnsavedChanges() ? "\n" : ", saved\n";
    }
    return out;
}

const Case Cases[]{
    {"create, change, remove", R"({"a":{"x":1}}
redo, saved
push /a/y 2 => Create /a/y: () -> 2
push /a/y [3] => Change /a/y: 2 -> [3]
remove /a/y => Remove /a/y: [3] -> ()
undo => Create /a/y: () -> [3]
undo => Change /a/y: [3] -> 2
undo => Remove /a/y: 2 -> (), saved
undo, saved
{"a":{"x":1}}
redo => Create /a/y: () -> 2
redo => Change /a/y: 2 -> [3]
redo => Remove /a/y: [3] -> ()
redo
{"a":{"x":1}}
)"},
    {"missing parents, of which the top-level member stays, and a scalar",
        R"({"b":5}
push /a/b/c 1 => Create /a/b/c: () -> 1
push /b/x 1
{"b":{"x":1},"a":{"b":{"c":1}}}
undo
undo => Remove /a/b/c: 1 -> (), saved
{"b":{},"a":{}}
)"},
    {"escapes, with handlers found by what is written, and empty names",
        R"({"a":{}}
push /a/~01~1 1 => Create /a/~01~1: () -> 1
push /a/~01~1 2 => Change /a/~01~1: 1 -> 2
push /~1 1 => Create /~1: () -> 1
push /a/ 1 => Create /a/: () -> 1
push /a/ {} => Change /a/: 1 -> {}
push /a//x 1 => Create /a//x: () -> 1
{"a":{"~1/":2,"":{"x":1}},"/":1}
remove /a//x => Remove /a//x: 1 -> ()
{"a":{"~1/":2},"/":1}
)"},
    {"the root", R"({"a":1}
push  {"b":2}
remove
{"b":2}
undo
undo, saved
{"a":1}
)"},

    /* Removal */
    {"empty containers go, up to the top level, where one can be removed",
        R"({"a":{"b":{"l":[{"c":1}]}},"list":[]}
remove /a/b/l/0/c => Remove /a/b/l/0/c: 1 -> ()
{"a":{},"list":[]}
remove /a => Remove /a: {} -> ()
undo => Create /a: () -> {}
{"list":[],"a":{}}
)"},
    {"of what isn't there", R"({"a":{"b":{},"c":1}}
remove /a/d => Create /a/d: () -> ()
{"a":{"b":{},"c":1}}
remove /a/b/x => Create /a/b/x: () -> ()
remove /a/c/x => Create /a/c/x: () -> ()
undo => Create /a/c/x: () -> ()
{"a":{"c":1}}
)"},

    /* Arrays */
    {"at the end and beyond it, and indices that are no pointers",
        R"({"list":[1]}
push /list/- 2 => Create /list/1: () -> 2
push /list/-7 3 => Create /list/2: () -> 3
push /list/-/x 4 => Create /list/3/x: () -> 4
push /list/99999999999999999999 5 => Create /list/4: () -> 5
push /list/6 6 => Create /list/6: () -> 6
push /list/01 7 => Create /list/1: () -> 7
push /list/-0 8 => Create /list/0: () -> 8
{"list":[8,1,7,2,3,{"x":4},5,null,6]}
undo => Remove /list/0: 8 -> ()
undo => Remove /list/1: 7 -> ()
undo => Remove /list/6: 6 -> ()
{"list":[1,2,3,{"x":4},5,null]}
)"},
    {"missing ones, only made where an index tells it", R"({"objects":{}}
push /a/1 5 => Create /a/1: () -> 5
push /objects/b/-3 5 => Create /objects/b/0: () -> 5
push /objects/c/- 5 => Create /objects/c/-: () -> 5
push /objects/d/1700000000000 5 => Create /objects/d/0: () -> 5
push /objects/e/007 5 => Create /objects/e/007: () -> 5
push /objects/f/-0 5 => Create /objects/f/-0: () -> 5
{"objects":{"b":[5],"c":{"-":5},"d":[5],"e":{"007":5},"f":{"-0":5}},"a":[null,5]}
)"},
    {"members named like elements, of an object that becomes an array",
        R"({"b":{"c":{"x":{"007":1},"y":{"1700000000000":1},"z":{"-5":1}}}}
beginGroup, saved
remove /b/c/x/007
remove /b/c/y/1700000000000
push /b/c/z/-5 2
remove /b/c/z/-5
commit
{"b":{}}
undo, saved
{"b":{"c":{"z":[1],"y":[1],"x":{"007":1}}}}
redo
{"b":{}}
undo, saved
{"b":{"c":{"z":[1],"y":[1],"x":{"007":1}}}}
)"},
    {"what an index is filled up with stays, once", R"({"b":{"c":{"5":1}}}
remove /b/c/5
undo, saved
redo
undo, saved
redo
{"b":{"c":[null,null,null,null,null]}}
)"},
    {"what is done to such a member is done to its element",
        R"({"b":{"c":{"-5":{"x":1,"y":1},"-":{"x":1,"y":2},"0":3}}}
push /b/c/-5/x 2
push /b/c/-/x 2
remove /b/c/-/y
remove /b/c/-5
remove /b/c/-
remove /b/c/0
undo
undo
undo
undo
undo
undo, saved
{"b":{"c":[3,{"x":1,"y":2},{"x":1,"y":1}]}}
redo
redo
redo
redo
redo
redo
{"b":{}}
)"},
    {"dragging what moved up", R"({"list":[1,2,3],"a":0}
push /a 1 => Change /a: 0 -> 1
remove /list/1 => Remove /list/1: 2 -> ()
drag /list/1 5 => Change /list/1: 3 -> 5
dragRemove /list/1 => Remove /list/1: 3 -> ()
undo => Create /list/1: () -> 3
undo => Create /list/1: () -> 2
{"list":[1,2,3],"a":1}
)"},

    /* Merging */
    {"where it is asked for, into the newest of the path but the first change",
        R"({"a":{"x":1}}
drag /a/x 2 => Change /a/x: 1 -> 2
drag /a/x 3 => Change /a/x: 2 -> 3
push /a/x 4 => Change /a/x: 3 -> 4
drag /a/x 5 => Change /a/x: 3 -> 5
undo => Change /a/x: 5 -> 3
undo => Change /a/x: 3 -> 2
)"},
    {"keeps what can be redone", R"({"a":{"x":1,"y":1}}
push /a/y 2 => Change /a/y: 1 -> 2
push /a/x 2 => Change /a/x: 1 -> 2
push /a/y 3 => Change /a/y: 2 -> 3
undo => Change /a/y: 3 -> 2
drag /a/x 4 => Change /a/x: 1 -> 4
redo => Change /a/y: 2 -> 3
{"a":{"x":4,"y":3}}
)"},
    {"not where a new change is forced, which any push uses up",
        R"({"a":{"x":1}}
push /a/y 1 => Create /a/y: () -> 1
drag /a/x 2 => Change /a/x: 1 -> 2
forceNew
drag /a/x 3 => Change /a/x: 2 -> 3
drag /a/x 4 => Change /a/x: 2 -> 4
forceNew
push /a/y 2 => Change /a/y: 1 -> 2
drag /a/x 5 => Change /a/x: 2 -> 5
)"},
    {"not across a step", R"({"a":{"x":1}}
push /a/y 1 => Create /a/y: () -> 1
drag /a/x 2 => Change /a/x: 1 -> 2
beginGroup
drag /a/x 3
drag /a/x 4
commit => Change /a/x: 2 -> 4
drag /a/y 2 => Change /a/y: 1 -> 2
drag /a/x 5 => Change /a/x: 4 -> 5
)"},
    {"creations and removals", R"({"a":{"x":1}}
push /a/x 2 => Change /a/x: 1 -> 2
drag /a/y 1 => Create /a/y: () -> 1
drag /a/y 2 => Create /a/y: () -> 2
dragRemove /a/x => Remove /a/x: 2 -> ()
drag /a/x 5 => Change /a/x: 2 -> 5
dragRemove /a/y => Create /a/y: () -> ()
undo => Create /a/y: () -> ()
)"},

    /* Groups */
    {"one step, told on commit", R"({"a":{"x":1}}
push /a/x 2 => Change /a/x: 1 -> 2
beginGroup
push /a/x 3
push /a/y 1
remove /a/x
commit => Change /a/x: 2 -> 3
    => Create /a/y: () -> 1
    => Remove /a/x: 3 -> ()
undo => Create /a/x: () -> 3
    => Remove /a/y: 1 -> ()
    => Change /a/x: 3 -> 2
redo => Change /a/x: 2 -> 3
    => Create /a/y: () -> 1
    => Remove /a/x: 3 -> ()
{"a":{"y":1}}
)"},
    {"commit without one tells again", R"({"a":{"x":1}}
push /a/x 2 => Change /a/x: 1 -> 2
push /a/x 3 => Change /a/x: 2 -> 3
commit => Change /a/x: 1 -> 2
    => Change /a/x: 2 -> 3
undo => Change /a/x: 3 -> 2
commit => Change /a/x: 1 -> 2
)"},
    {"begun within another", R"({"a":{"x":1}}
push /a/x 2 => Change /a/x: 1 -> 2
beginGroup
push /a/x 3
beginGroup
push /a/x 4
commit => Change /a/x: 3 -> 4
undo => Change /a/x: 4 -> 3
undo => Change /a/x: 3 -> 2
redo => Change /a/x: 2 -> 3
)"},

    /* What is saved */
    {"the saved state is come back to, then dropped", R"({"a":{"x":1}}
push /a/x 2 => Change /a/x: 1 -> 2
push /a/x 3 => Change /a/x: 2 -> 3
markSave, saved
push /a/x 4 => Change /a/x: 3 -> 4
undo => Change /a/x: 4 -> 3, saved
undo => Change /a/x: 3 -> 2
redo => Change /a/x: 2 -> 3, saved
undo => Change /a/x: 3 -> 2
undo => Change /a/x: 2 -> 1
push /a/x 5 => Change /a/x: 1 -> 5
redo
push /a/x 6 => Change /a/x: 5 -> 6
undo => Change /a/x: 6 -> 5
undo => Change /a/x: 5 -> 1, saved
)"},
    {"a merge doesn't touch it", R"({"a":{"x":1,"y":1}}
push /a/y 2 => Change /a/y: 1 -> 2
drag /a/x 2 => Change /a/x: 1 -> 2
markSave, saved
drag /a/x 3 => Change /a/x: 1 -> 3, saved
forceNew, saved
drag /a/x 4 => Change /a/x: 3 -> 4
)"},

    {"appending to an array and to what isn't one",
        R"({"list":["x"],"a":{"x":1}}
append /list "y" => Change /list: ["x"] -> ["x","y"]
append /list "z" => Change /list: ["x","y"] -> ["x","y","z"]
undo => Change /list: ["x","y","z"] -> ["x","y"]
append /a/x "y" => Change /a/x: 1 -> ["y"]
append /a/y "y" => Create /a/y: () -> ["y"]
{"list":["x","y"],"a":{"x":["y"],"y":["y"]}}
)"},
};

TEST(ChangeManagerTest, transcripts) {
    for(const Case& i: Cases) {
        SCOPED_TRACE(i.name);
        EXPECT_EQ(repeated(i.transcript), i.transcript);
    }
}

class Fixture {
public:
    explicit Fixture(const char* document): manager{project} {
        project.document.Parse(document);
        manager.addChangeHandler(
            "a",
            [this](const Change& change,
                Containers::ArrayView<Containers::StringView>,
                void*) { told += printed(change) + '\n'; },
            nullptr);
    }

    void perform(const char* operation) {
        ChangeOperation{operation}.perform(manager);
    }

    std::string document() { return jsonText(project.document); }
    std::string last() { return printed(manager.lastChange()); }

    ProjectFile project;
    ChangeManager manager;
    std::string told;
};

TEST(ChangeManagerTest, typedValues) {
    Fixture fixture{R"({"a":{}})"};
    {
        /* Neither terminated nor there afterwards */
        const std::string text = "textual";
        fixture.manager.pushChange(
            "/a/text", Containers::StringView{text.data(), 4}, false);
    }
    fixture.manager.pushChange("/a/none", Containers::StringView{}, false);
    fixture.manager.pushNumber("/a/integer", -3, false);
    fixture.manager.pushNumber("/a/large", ~std::uint64_t{}, false);
    fixture.manager.pushNumber("/a/real", 0.1f, false);
    fixture.manager.pushBool("/a/bool", false, false);
    fixture.manager.pushChange(
        "/a/vector", Magnum::Math::Vector3<float>{1.0f, -2.0f, 0.1f}, false);
    fixture.manager.pushChange("/a/rotation",
        Magnum::Math::Quaternion<float>{{1.0f, 2.0f, 3.0f}, 0.1f}, false);
    EXPECT_EQ(fixture.document(),
        R"({"a":{"text":"text","none":"","integer":-3,)"
        R"("large":18446744073709551615,"real":0.10000000149011612,)"
        R"("bool":false,)"
        R"("vector":[1.0,-2.0,0.10000000149011612],)"
        R"("rotation":[1.0,2.0,3.0,0.10000000149011612]}})");
}

/* Literals that would pass for a null pointer, which removes, don't compile */
#define EXPECT_NO_PUSH(name, literal)                                          \
    template<class Manager, class Path>                                        \
    auto name(int)->decltype(std::declval<Manager&>().pushChange(              \
                                 std::declval<Path>(), literal, false),        \
        std::true_type{});                                                     \
    template<class, class> std::false_type name(...);                          \
    static_assert(!decltype(name<ChangeManager, const char*>(0))::value, "");  \
    static_assert(                                                             \
        !decltype(name<ChangeManager, Containers::StringView>(0))::value, ""); \
    static_assert(                                                             \
        !decltype(name<ChangeManager, Containers::String>(0))::value, "");

EXPECT_NO_PUSH(zero, 0)
EXPECT_NO_PUSH(unsignedZero, 0u)
EXPECT_NO_PUSH(no, false)
EXPECT_NO_PUSH(real, 0.5)
EXPECT_NO_PUSH(nothing, {})

TEST(ChangeManagerTest, nullRemoves) {
    Fixture fixture{R"({"a":[1,2,3,4,5]})"};
    const Containers::String path = "/a/0";
    fixture.manager.pushChange("/a/0", nullptr, false);
    fixture.manager.pushChange(path, nullptr, false);
    fixture.manager.pushChange(Containers::String{path}, nullptr, false);
    fixture.manager.pushChange(Containers::StringView{path}, nullptr, false);
    fixture.manager.pushChange("/a/1", {1.0f, 2.0f, 3.0f}, false);
    EXPECT_EQ(fixture.document(), R"({"a":[5,[1.0,2.0,3.0]]})");
}

TEST(ChangeManagerTest, transform) {
    typedef Magnum::Math::Matrix4<float> Matrix4;
    Fixture fixture{R"({"a":{"x":1}})"};
    fixture.perform("push /a/x 2");
    fixture.manager.pushTransformChange(
        "/a", Matrix4::translation({1, 2, 3}), true);
    /* Merges, which turns the order around */
    fixture.manager.pushTransformChange(
        "/a", Matrix4::translation({4, 5, 6}), true);
    for(int i = 0; i != 4; ++i)
        fixture.manager.undoLast();
    EXPECT_EQ(fixture.told,
        R"(Change /a/x: 1 -> 2
Create /a/translation: () -> [1.0,2.0,3.0]
Create /a/rotation: () -> [0.0,0.0,0.0,1.0]
Create /a/scaling: () -> [1.0,1.0,1.0]
Create /a/translation: () -> [4.0,5.0,6.0]
Create /a/rotation: () -> [0.0,0.0,0.0,1.0]
Create /a/scaling: () -> [1.0,1.0,1.0]
Remove /a/scaling: [1.0,1.0,1.0] -> ()
Remove /a/translation: [4.0,5.0,6.0] -> ()
Remove /a/rotation: [0.0,0.0,0.0,1.0] -> ()
Change /a/x: 2 -> 1
)");
    EXPECT_EQ(fixture.document(), R"({"a":{"x":1}})");
}

/* Nothing is shared with what is pushed or with the document */
TEST(ChangeManagerTest, ownership) {
    Fixture fixture{R"({"a":{"x":{"y":[1]},"z":"z"}})"};
    JsonAllocator& allocator = fixture.manager.allocator();
    EXPECT_EQ(&allocator, &fixture.project.allocator());
    fixture.perform("push /a/w 0");

    /* A value of the document, below itself */
    fixture.manager.pushChange(
        "/a/x/y/0", fixture.project.document["a"]["x"], true);
    EXPECT_EQ(
        fixture.document(), R"({"a":{"x":{"y":[{"y":[1]}]},"z":"z","w":0}})");
    /* A value of the change that's merged into, and a part of it */
    fixture.manager.pushChange(
        "/a/x/y/0", *fixture.manager.lastChange().newValue, true);
    fixture.manager.pushChange(
        "/a/x/y/0", (*fixture.manager.lastChange().newValue)["y"], true);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":{"y":[[1]]},"z":"z","w":0}})");
    /* A value of a change that's about to be dropped */
    fixture.manager.undoLast();
    fixture.manager.redoLastUndo();
    const Change& dropped = fixture.manager.lastChange();
    fixture.manager.undoLast();
    fixture.manager.pushChange("/a/z", *dropped.newValue, false);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":{"y":[1]},"z":[1],"w":0}})");

    /* Editing the document directly doesn't change the history */
    fixture.project.document["a"]["z"].PushBack(2, allocator);
    EXPECT_EQ(fixture.last(), R"(Change /a/z: "z" -> [1])");

    /* A text that is only referred to is copied all the same */
    char text[]{"text"};
    JsonValue list{rapidjson::kArrayType};
    list.PushBack(rapidjson::StringRef(text), allocator);
    JsonValue record{rapidjson::kObjectType};
    record.AddMember(rapidjson::StringRef(text), list, allocator);
    fixture.manager.pushChange("/a/z", record, true);
    text[0] = '?';
    EXPECT_EQ(fixture.last(), R"(Change /a/z: "z" -> {"text":["text"]})");
    EXPECT_EQ(fixture.document(),
        R"({"a":{"x":{"y":[1]},"z":{"text":["text"]},"w":0}})");

    /* Paths and texts in a history that is moved in memory meanwhile */
    for(int i = 0; i != 70; ++i) {
        Change& last = fixture.manager.lastChange();
        std::string path = last.path;
        if(i % 3 == 0) {
            fixture.manager.pushTransformChange(last.path, {}, false);
            path += "/scaling";
        } else if(i % 3 == 1) {
            fixture.manager.pushAppend(last.path, last.path);
            EXPECT_EQ(
                fixture.manager.lastChange().newValue->End()[-1], path.data());
        } else
            fixture.manager.pushChange(
                std::move(last.path), last.newValue.get(), false);
        EXPECT_EQ(fixture.manager.lastChange().path, view(path));
    }
}

/* More than the call stack has room for */
TEST(ChangeManagerTest, anyDepth) {
    std::string json;
    for(int i = 0; i != 500000; ++i)
        json += "[1,{\"a\":";
    json += "null";
    for(int i = 0; i != 500000; ++i)
        json += "}]";
    JsonDocument value;
    value.Parse<rapidjson::kParseIterativeFlag>(json.data());

    Fixture fixture{R"({"a":{"x":1}})"};
    fixture.manager.pushChange("/a/x", value, false);
    EXPECT_EQ(
        fixture.told, "Change /a/x: 1 -> " + json.substr(0, 1000) + "...\n");
    fixture.manager.undoLast();
    EXPECT_EQ(fixture.document(), R"({"a":{"x":1}})");
    fixture.manager.redoLastUndo();
    const JsonValue* inner = &fixture.project["a/x"].readValue();
    for(int i = 0; i != 500000; ++i) {
        ASSERT_TRUE(inner->IsArray() && inner->Size() == 2) << i;
        inner = &(*inner)[1]["a"];
    }
    EXPECT_TRUE(inner->IsNull());
}

TEST(ChangeManagerTest, applyAndReverse) {
    Fixture fixture{R"({"a":{"x":1}})"};
    fixture.perform("push /a/x 2");
    fixture.told.clear();

    Change change;
    EXPECT_EQ(change.group, -1);
    change.path = "/a/y";
    change.newValue.emplace(5);
    change.group = 7;
    fixture.manager.applyChange(change);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":2,"y":5}})");
    EXPECT_EQ(fixture.told, "Create /a/y: () -> 5\n");
    EXPECT_EQ(fixture.last(), "Change /a/x: 1 -> 2");

    const Change reversed = fixture.manager.reverse(change);
    EXPECT_EQ(printed(reversed), "Remove /a/y: 5 -> ()");
    EXPECT_EQ(reversed.group, -1);
    EXPECT_EQ(printed(change), "Create /a/y: () -> 5");

    fixture.manager.undo(change);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":2}})");
    EXPECT_FALSE(fixture.manager.hasUnsavedChanges());
}

TEST(ChangeManagerTest, moveChange) {
    const auto change = [](const char* path, int oldValue, int newValue) {
        Change out;
        out.path = path;
        out.oldValue.emplace(oldValue);
        out.newValue.emplace(newValue);
        out.group = newValue + 1;
        return out;
    };
    Change a = change("/a", 1, 2);
    Change b{std::move(a)};
    EXPECT_FALSE(a.oldValue || a.newValue);
    Change c = change("/c", 4, 5);
    c = std::move(b);
    EXPECT_EQ(printed(c), "Change /a: 1 -> 2");
    EXPECT_EQ(c.group, 3);
    /* Exchanged, so that they go with what was moved from */
    EXPECT_TRUE(*b.oldValue == 4 && *b.newValue == 5);

    c.newValue = nullptr;
    EXPECT_EQ(printed(c), "Remove /a: 1 -> ()");
    c.oldValue = nullptr;
    EXPECT_EQ(printed(c), "Create /a: () -> ()");
    c.newValue.emplace("text");
    EXPECT_EQ(printed(c), "Create /a: () -> \"text\"");
}

struct Told {
    static void handle(const Change&,
        Containers::ArrayView<Containers::StringView> path, void* userData) {
        Told& self = *static_cast<Told*>(userData);
        ++self.count;
        self.segments.assign(path.begin(), path.end());
    }

    int count = 0;
    std::vector<std::string> segments;
};

TEST(ChangeManagerTest, handlers) {
    Fixture fixture{"{}"};
    ChangeManager& manager = fixture.manager;
    Told a, b, b2;
    manager.addChangeHandler("a", Told::handle, &a);
    manager.addChangeHandler("b", Told::handle, &b);

    /* Once for each time it occurs, not by part of a segment */
    fixture.perform("push /b//b/c 1");
    fixture.perform("push /ab/bb 1");
    EXPECT_EQ(a.count, 0);
    EXPECT_EQ(b.count, 2);
    EXPECT_EQ(b.segments, (std::vector<std::string>{"", "b", "", "b", "c"}));

    /* All are found however many there are, the second of one segment too */
    std::vector<Told> many(40);
    for(std::size_t i = 0; i != many.size(); ++i)
        manager.addChangeHandler(
            view("n" + std::to_string(i)), Told::handle, &many[i]);
    manager.addChangeHandler("b", Told::handle, &b2);
    fixture.perform("push /a/b/n0/n39 1");
    EXPECT_TRUE(a.count == 1 && b.count == 3 && b2.count == 1);
    for(std::size_t i = 0; i != many.size(); ++i)
        EXPECT_EQ(many[i].count, i == 0 || i == 39);
}

TEST(ChangeManagerTest, reset) {
    struct CountingHandler: ChangeHandler {
        explicit CountingHandler(int& d): destroyed(d) {}
        ~CountingHandler() override { ++destroyed; }
        void handle(const Change&,
            Containers::ArrayView<Containers::StringView>) override {}

        int& destroyed;
    };
    Fixture first{"{}"};
    ProjectFile second;
    int destroyed = 0;
    first.manager.addChangeHandler("a",
        Containers::Pointer<ChangeHandler>{new CountingHandler{destroyed}});
    for(const char* operation:
        {"push /a \"x\"", "markSave", "beginGroup", "forceNew"})
        first.perform(operation);

    first.manager.reset(second);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(&first.manager.allocator(), &second.allocator());
    /* The save mark stays, and so does the group */
    EXPECT_TRUE(first.manager.hasUnsavedChanges());
    first.perform("push /a \"x\"");
    first.perform("drag /a \"y\"");
    EXPECT_EQ(first.last(), R"(Change /a: "x" -> "y")");
    EXPECT_EQ(first.manager.lastChange().group, 1);
    EXPECT_EQ(first.document(), R"({"a":"x"})");
    EXPECT_EQ(jsonText(second.document), R"({"a":"y"})");
    first.perform("commit");
    first.perform("undo");
    EXPECT_EQ(jsonText(second.document), "{}");
}

TEST(ChangeManagerTest, registerFromHandler) {
    Fixture fixture{"{}"};
    Told told;
    bool done = false;
    fixture.manager.addChangeHandler(
        "a",
        [&](const Change&, Containers::ArrayView<Containers::StringView>,
            void*) {
            /* Enough to have the lists of handlers move */
            for(int i = 0; !done && i != 20; ++i)
                fixture.manager.addChangeHandler(
                    view("n" + std::to_string(i)), Told::handle, &told);
            if(!done)
                fixture.manager.addChangeHandler("a", Told::handle, &told);
            done = true;
        },
        nullptr);

    /* Told of from the next one on, even in a commit */
    for(const char* operation:
        {"beginGroup", "push /a/n7 1", "push /a/n8 1", "commit"})
        fixture.perform(operation);
    EXPECT_EQ(told.count, 2);
    fixture.perform("push /a 1");
    EXPECT_EQ(told.count, 3);
}

TEST(ChangeManagerTest, removeHandler) {
    Fixture fixture{"{}"};
    ChangeManager& manager = fixture.manager;
    Told told[3];
    const ChangeHandler* handlers[3];
    for(std::size_t i = 0; i != 3; ++i) {
        Containers::Pointer<ChangeHandler> handler{
            new FunctionChangeHandler{Told::handle, &told[i]}};
        handlers[i] = handler.get();
        manager.addChangeHandler("b", std::move(handler));
    }
    const FunctionChangeHandler other{Told::handle, nullptr};
    EXPECT_FALSE(manager.removeChangeHandler("b", other));
    EXPECT_FALSE(manager.removeChangeHandler("c", *handlers[0]));
    EXPECT_EQ(
        manager.removeChangeHandler("b", *handlers[1]).get(), handlers[1]);
    fixture.perform("push /b 1");
    EXPECT_TRUE(told[0].count == 1 && told[1].count == 0 && told[2].count == 1);
    for(const std::size_t i: {0, 2})
        EXPECT_TRUE(manager.removeChangeHandler("b", *handlers[i]));
    EXPECT_FALSE(manager.removeChangeHandler("b", *handlers[0]));
    fixture.perform("push /b 2");
    EXPECT_TRUE(told[0].count == 1 && told[2].count == 1);
}

/* Whatever a handler throws, the step is made and all others are told */
TEST(ChangeManagerTest, throwingHandlers) {
    Fixture fixture{R"({"a":{"x":1,"y":1}})"};
    ChangeManager& manager = fixture.manager;
    const auto throws = [](int what) {
        return
            [what](const Change&, Containers::ArrayView<Containers::StringView>,
                void*) { throw what; };
    };
    Told told;
    manager.addChangeHandler("a", throws(1), nullptr);
    manager.addChangeHandler("a", throws(2), nullptr);
    manager.addChangeHandler("a", Told::handle, &told);
    const auto thrown = [&](auto&& call) {
        try {
            call();
        } catch(int what) {
            return what;
        }
        return 0;
    };

    EXPECT_EQ(thrown([&] { fixture.perform("push /a/x 2"); }), 1);
    fixture.perform("beginGroup");
    EXPECT_EQ(thrown([&] { fixture.perform("push /a/x 3"); }), 0);
    fixture.perform("push /a/y 3");
    EXPECT_EQ(thrown([&] { fixture.perform("commit"); }), 1);
    EXPECT_EQ(told.count, 3);
    EXPECT_EQ(thrown([&] { fixture.perform("undo"); }), 1);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":2,"y":1}})");
    EXPECT_EQ(fixture.last(), "Change /a/x: 1 -> 2");
    EXPECT_EQ(thrown([&] { fixture.perform("redo"); }), 1);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":3,"y":3}})");
    EXPECT_EQ(told.count, 7);
    EXPECT_EQ(thrown([&] { manager.goToStep(0); }), 1);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":1,"y":1}})");
    EXPECT_EQ(thrown([&] { manager.pushTransformChange("/a", {}, false); }), 1);
    EXPECT_EQ(manager.steps().size(), 3u);
    EXPECT_EQ(told.count, 13);
}

/* Steps, and how many are made, then how many in the saved state */
TEST(ChangeManagerTest, steps) {
    Fixture fixture{R"({"a":{}})"};
    ChangeManager& manager = fixture.manager;
    const auto paths = [](Containers::ArrayView<const Change> step) {
        std::string out;
        for(const Change& change: step)
            out += std::string{change.path}.substr(2);
        return out;
    };
    const auto steps = [&] {
        std::string out;
        for(const auto& step: manager.steps())
            out += paths(step) + ' ';
        return out + std::to_string(manager.currentStep()) + ' ' +
            std::to_string(manager.savedStep()) + ", undo" +
            paths(manager.nextUndo()) + (manager.canUndo() ? "!" : "") +
            ", redo" + paths(manager.nextRedo()) +
            (manager.canRedo() ? "!" : "");
    };
    const struct {
        const char *operations, *steps;
    } data[]{
        {"", "0 0, undo, redo"},
        {"push /a/x 1", "/x 1 0, undo/x!, redo"},
        {"beginGroup;push /a/y 1;push /a/z 1", "/x /y/z 2 0, undo, redo"},
        {"markSave;push /a/w 1", "/x /y/z/w 2 -1, undo, redo"},
        {"commit;markSave", "/x /y/z/w 2 2, undo/y/z/w!, redo"},
        {"undo", "/x /y/z/w 1 2, undo/x!, redo/y/z/w!"},
        {"undo", "/x /y/z/w 0 2, undo, redo/x!"},
        {"redo;redo", "/x /y/z/w 2 2, undo/y/z/w!, redo"},
        {"push /a/v 1;undo", "/x /y/z/w /v 2 2, undo/y/z/w!, redo/v!"},
        {"undoOne", "/x /y/z /w /v 2 3, undo/y/z!, redo/w!"},
        {"push /a/u 1", "/x /y/z /u 3 0, undo/u!, redo"},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.operations);
        std::istringstream operations{i.operations};
        std::string operation;
        while(std::getline(operations, operation, ';'))
            if(operation == "undoOne")
                manager.undo(manager.lastChange());
            else
                fixture.perform(operation.data());
        EXPECT_EQ(steps(), i.steps);
    }

    /* Handlers are told as by so many calls */
    fixture.told.clear();
    manager.goToStep(0);
    manager.goToStep(2);
    manager.goToStep(2);
    const std::string told = fixture.told;
    manager.goToStep(3);
    fixture.told.clear();
    for(const char* operation: {"undo", "undo", "undo", "redo", "redo"})
        fixture.perform(operation);
    EXPECT_EQ(fixture.told, told);
    EXPECT_EQ(manager.currentStep(), 2);

    /* Inside a handler all is as the document is then */
    manager.addChangeHandler(
        "x",
        [&](const Change&, Containers::ArrayView<Containers::StringView>,
            void*) {
            manager.markSave();
            EXPECT_FALSE(manager.hasUnsavedChanges());
            EXPECT_EQ(steps(), "/x /y/z /u 0 0, undo, redo/x!");
        },
        nullptr);
    manager.goToStep(0);
    EXPECT_FALSE(manager.hasUnsavedChanges());
}

/* What the caller writes to the last change counts from the next call on */
TEST(ChangeManagerTest, lastChangeIsWritten) {
    Fixture fixture{R"({"a":{"x":1,"y":1}})"};
    for(const char* operation: {"push /a/z 1", "drag /a/x 2", "drag /a/y 2",
            "drag /a/x 3", "drag /a/y 3"})
        fixture.perform(operation);
    fixture.manager.lastChange().path = "/a/w";
    fixture.perform("drag /a/x 4");
    fixture.perform("drag /a/y 4");
    EXPECT_EQ(fixture.last(), "Change /a/y: 3 -> 4");
    fixture.perform("drag /a/w 5");
    EXPECT_EQ(fixture.last(), "Change /a/w: 1 -> 5");
    fixture.manager.lastChange().group = 7;
    fixture.perform("drag /a/w 6");
    EXPECT_EQ(fixture.last(), "Change /a/w: 5 -> 6");
    EXPECT_EQ(fixture.manager.steps().size(), 5u);
    /* Beyond what could be redone */
    for(const char* operation: {"undo", "undo", "push /a/v 1", "drag /a/x 5"})
        fixture.perform(operation);
    EXPECT_EQ(fixture.last(), "Change /a/x: 1 -> 5");
}

/* All that a handler must not do */
TEST(ChangeManagerDeathTest, fromHandler) {
    typedef void (*Call)(ChangeManager&, ProjectFile&);
    const struct {
        Call call;
        const char* message;
    } cases[]{
        {[](auto& m, auto&) { m.pushChange("/a", "", true); },
            "pushChange(): Can't push changes"},
        {[](auto& m, auto&) { m.pushRemoval("/a"); },
            "pushChange(): Can't push changes"},
        {[](auto& m, auto&) { m.pushAppend("/a", ""); },
            "pushChange(): Can't push changes"},
        {[](auto& m, auto&) { m.undoLast(); },
            "undoLast(): Can't undo/redo changes"},
        {[](auto& m, auto&) { m.redoLastUndo(); },
            "redoLastUndo(): Can't undo/redo changes"},
        {[](auto& m, auto&) { m.undo(m.lastChange()); },
            "undo(): Can't undo/redo changes"},
        {[](auto& m, auto&) { m.applyChange(m.lastChange()); },
            "applyChange(): Can't apply changes"},
        {[](auto& m, auto&) { m.beginGroup(); },
            "beginGroup(): Can't begin a group"},
        {[](auto& m, auto&) { m.commit(); }, "commit(): Can't commit a group"},
        {[](auto& m, auto& p) { m.reset(p); }, "reset(): Can't reset"},
        {[](auto& m, auto&) { m.goToStep(0); },
            "goToStep(): Can't undo/redo changes"},
        {[](auto& m, auto&) {
             m.removeChangeHandler("a", FunctionChangeHandler{{}, nullptr});
         },
            "removeChangeHandler(): Can't remove handlers"},
        {[](auto& m, auto&) { m.~ChangeManager(); },
            "~ChangeManager(): Can't destroy the manager"},
    };
    for(const auto& i: cases) {
        Fixture fixture{"{}"};
        fixture.manager.addChangeHandler(
            "a",
            [&](const Change&, Containers::ArrayView<Containers::StringView>,
                void*) { i.call(fixture.manager, fixture.project); },
            nullptr);
        EXPECT_DEATH(fixture.perform("push /a 1"),
            testing::Eq(std::string{"ChangeManager::"} + i.message +
                " from a change handler.\n"));
    }
}

TEST(ChangeManagerDeathTest, openGroup) {
    Fixture fixture{"{}"};
    fixture.perform("beginGroup");
    EXPECT_DEATH(fixture.manager.undoLast(),
        testing::Eq("ChangeManager::undoLast(): Can't undo/redo changes in "
                    "group. Forgot commit()?\n"));
    EXPECT_DEATH(fixture.manager.redoLastUndo(),
        testing::Eq("ChangeManager::redoLastUndo(): Can't undo/redo changes "
                    "in group. Forgot commit()?\n"));
    EXPECT_DEATH(fixture.manager.goToStep(0),
        testing::Eq("ChangeManager::goToStep(): Can't undo/redo changes "
                    "in group. Forgot commit()?\n"));
}

TEST(ChangeManagerDeathTest, invalid) {
    Fixture fixture{R"({"a":5})"};
    EXPECT_DEATH(fixture.manager.lastChange(),
        "^Assertion _lastChange >= 0 && .*_lastChange.* < _changes\\.size\\(\\)"
        " failed at src/ChangeManager\\.cpp:[0-9]+\n$");
    /* An element of what is no array */
    EXPECT_DEATH(fixture.perform("push /a/0 1"),
        "^Assertion parent->IsArray\\(\\) failed at "
        "src/Implementation/DocumentEdits\\.cpp:[0-9]+\n$");
    EXPECT_DEATH(fixture.manager.goToStep(1),
        testing::Eq("ChangeManager::goToStep(): step 1 out of range for 0 "
                    "steps\n"));
    EXPECT_DEATH(fixture.manager.pushChange(
                     "/a", Containers::StringView{"", 0xffffffffu}, false),
        testing::Eq("ChangeManager: a text of 4294967295 bytes doesn't fit a "
                    "JSON value\n"));
    EXPECT_DEATH(fixture.manager.addChangeHandler("a", nullptr),
        testing::Eq("ChangeManager::addChangeHandler(): handler cannot be "
                    "nullptr.\n"));
    EXPECT_DEATH(fixture.manager.addChangeHandler("", Told::handle, nullptr),
        testing::Eq("StaticMap::put(): key cannot be nullptr.\n"));
}

}}}

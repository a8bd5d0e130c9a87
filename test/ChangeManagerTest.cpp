#include <algorithm>
#include <string>
#include <vector>
#include <gtest/gtest.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <Magnum/Math/Vector3.h>

#include "ChangeManagerComparison.h"
#include "TemporaryFolder.h"

namespace OrrelinEngine { namespace {

/* The transcript of the same operations, done now. After the arrow is what the
   handlers of "a", "list", "objects" and "~1" are told, then whether all is
   saved; a document in between is what there has to be. That the reference
   differs after an operation is told, too. */
std::string repeated(const std::string& transcript) {
    std::istringstream in{transcript};
    Containers::Pointer<Comparison> comparison;
    std::string out, line;
    while(std::getline(in, line)) {
        if(line.empty() || line[0] == '#') {
            comparison = nullptr;
            out += line + '\n';
            continue;
        }
        if(!comparison) {
            comparison.emplace(line);
            for(const char* segment: {"a", "list", "objects", "~1"})
                comparison->perform(ChangeOperation{"handle", segment, "=>"});
            out += line + '\n';
            continue;
        }
        const ChangeManagerReference& reference = comparison->reference;
        if(line[0] == ' ')
            continue;
        if(line[0] == '{') {
            out += jsonText(reference.document) + '\n';
            continue;
        }
        line = line.substr(0, std::min(line.find(" =>"), line.find(", saved")));
        const ChangeOperation operation{line.data()};
        out += operation.text() + comparison->perform(operation);
        const char* separator = " ";
        for(const std::string& told: reference.notifications) {
            out += separator + told;
            separator = "\n    ";
        }
        out += reference.hasUnsavedChanges() ? "\n" : ", saved\n";
    }
    return out;
}

TEST(ChangeManagerTest, transcripts) {
    const std::string transcripts =
        TemporaryFolder::readFile(TEST_DATA "/changes.txt");
    EXPECT_NE(transcripts, "");
    EXPECT_EQ(repeated(transcripts), transcripts);
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

    /* One after the other, with semicolons between */
    void perform(const char* operations) {
        std::istringstream in{operations};
        for(std::string operation; std::getline(in, operation, ';');)
            ChangeOperation{operation.data()}.perform(manager);
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
    static_assert(!decltype(name<ChangeManager, const char*>(0))::value &&     \
            !decltype(name<ChangeManager, Containers::StringView>(             \
                0))::value &&                                                  \
            !decltype(name<ChangeManager, Containers::String>(0))::value,      \
        "");

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
    Change a, c;
    a.path = "/a";
    a.oldValue.emplace(1);
    a.newValue.emplace(2);
    a.group = 3;
    c.oldValue.emplace(4);
    Change b{std::move(a)};
    EXPECT_FALSE(a.oldValue || a.newValue);
    c = std::move(b);
    EXPECT_EQ(printed(c), "Change /a: 1 -> 2");
    EXPECT_EQ(c.group, 3);
    /* Exchanged, so that it goes with what was moved from */
    EXPECT_EQ(*b.oldValue, 4);

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
    fixture.perform("push /b//b/c 1;push /ab/bb 1");
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
    first.perform("push /a \"x\";markSave;beginGroup;forceNew");

    first.manager.reset(second);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(&first.manager.allocator(), &second.allocator());
    /* The save mark stays, and so does the group */
    EXPECT_TRUE(first.manager.hasUnsavedChanges());
    first.perform("push /a \"x\";drag /a \"y\"");
    EXPECT_EQ(first.last(), R"(Change /a: "x" -> "y")");
    EXPECT_EQ(first.manager.lastChange().group, 1);
    EXPECT_EQ(first.document(), R"({"a":"x"})");
    EXPECT_EQ(jsonText(second.document), R"({"a":"y"})");
    first.perform("commit;undo");
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
    fixture.perform("beginGroup;push /a/n7 1;push /a/n8 1;commit");
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
    EXPECT_EQ(thrown([&] { manager.undo(manager.lastChange()); }), 1);
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
        if(i.operations == std::string{"undoOne"})
            manager.undo(manager.lastChange());
        else
            fixture.perform(i.operations);
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
    fixture.perform("undo;undo;undo;redo;redo");
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
    fixture.perform(
        "push /a/z 1;drag /a/x 2;drag /a/y 2;drag /a/x 3;drag /a/y 3");
    fixture.manager.lastChange().path = "/a/w";
    fixture.perform("drag /a/x 4;drag /a/y 4");
    EXPECT_EQ(fixture.last(), "Change /a/y: 3 -> 4");
    fixture.perform("drag /a/w 5");
    EXPECT_EQ(fixture.last(), "Change /a/w: 1 -> 5");
    fixture.manager.lastChange().group = 7;
    fixture.perform("drag /a/w 6");
    EXPECT_EQ(fixture.last(), "Change /a/w: 5 -> 6");
    EXPECT_EQ(fixture.manager.steps().size(), 5u);
    /* Beyond what could be redone */
    fixture.perform("undo;undo;push /a/v 1;drag /a/x 5");
    EXPECT_EQ(fixture.last(), "Change /a/x: 1 -> 5");
}

/* All that a handler must not do */
TEST(ChangeManagerDeathTest, fromHandler) {
    const struct {
        void (*call)(ChangeManager&, ProjectFile&);
        const char* message;
    } cases[]{
        {[](auto& m, auto&) { m.pushAppend("/a", ""); },
            "pushChange(): Can't push changes"},
        {[](auto& m, auto&) { m.undoLast(); },
            "undoLast(): Can't undo/redo changes"},
        {[](auto& m, auto&) { m.undo(m.lastChange()); },
            "undo(): Can't undo/redo changes"},
        {[](auto& m, auto&) { m.applyChange(m.lastChange()); },
            "applyChange(): Can't apply changes"},
        {[](auto& m, auto&) { m.beginGroup(); },
            "beginGroup(): Can't begin a group"},
        {[](auto& m, auto&) { m.commit(); }, "commit(): Can't commit a group"},
        {[](auto& m, auto& p) { m.reset(p); }, "reset(): Can't reset"},
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
    ChangeManager& manager = fixture.manager;
    manager.beginGroup();
    const auto message = [](const char* call) {
        return testing::Eq(std::string{"ChangeManager::"} + call +
            "(): Can't undo/redo changes in group. Forgot commit()?\n");
    };
    EXPECT_DEATH(manager.undoLast(), message("undoLast"));
    EXPECT_DEATH(manager.redoLastUndo(), message("redoLastUndo"));
    EXPECT_DEATH(manager.goToStep(0), message("goToStep"));
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

}}

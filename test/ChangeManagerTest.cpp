#include <cmath>
#include <sstream>
#include <vector>
#include <gtest/gtest.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <Magnum/Math/Vector3.h>

#include "ChangeOperation.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace Test { namespace {

/* What is the case after an operation */
struct State {
    /* As text of a ChangeOperation */
    const char* operation;
    const char* document;
    /* The change made last, empty if there is none */
    const char* last;
    bool unsaved;
    /* Changes that the handler of each top-level member was told of, "*" for
       the one above */
    const char* told;
};

struct Case {
    const char* name;
    const char* document;
    std::vector<State> states;
};

constexpr bool Saved = false, Unsaved = true;

class Fixture {
public:
    explicit Fixture(const char* json): manager{project} {
        project.document.Parse(json);
        for(const char* segment: {"a", "list", "objects", "~1"})
            manager.addChangeHandler(segment, tell, &told);
    }

    static void tell(const Change& change,
        Containers::ArrayView<Containers::StringView>, void* userData) {
        std::string& out = *static_cast<std::string*>(userData);
        out += (out.empty() ? "" : "; ") + printed(change);
    }

    void perform(const char* operation) {
        told.clear();
        ChangeOperation{operation}.perform(manager);
    }

    std::string document() const { return jsonText(project.document); }

    ProjectFile project;
    ChangeManager manager;
    std::string told;
};

void checkState(Fixture& fixture, const State& expected) {
    SCOPED_TRACE(expected.operation);
    EXPECT_EQ(fixture.document(), expected.document);
    EXPECT_EQ(fixture.manager.hasUnsavedChanges(), expected.unsaved);
    EXPECT_EQ(fixture.told,
        std::string{expected.told} == "*" ? expected.last : expected.told);
    if(*expected.last) {
        EXPECT_EQ(printed(fixture.manager.lastChange()), expected.last);
        return;
    }
    fixture.told.clear();
    fixture.manager.undoLast();
    EXPECT_EQ(fixture.document(), expected.document);
    EXPECT_EQ(fixture.told, "");
}

void check(const std::vector<Case>& cases) {
    for(const Case& i: cases) {
        SCOPED_TRACE(i.name);
        Fixture fixture{i.document};
        checkState(fixture, {"fresh", i.document, "", Saved, ""});
        for(const State& state: i.states) {
            fixture.perform(state.operation);
            checkState(fixture, state);
            if(testing::Test::HasFailure())
                return;
        }
    }
}

TEST(ChangeManagerTest, steps) {
    check({
        {"nothing to undo or redo", R"({"a":1})", {
            {"undo", R"({"a":1})", "", Saved, ""},
            {"redo", R"({"a":1})", "", Saved, ""},
        }},
        {"create, change, remove", R"({"a":{"x":1}})", {
            {"push /a/y 2", R"({"a":{"x":1,"y":2}})",
                "Create /a/y: () -> 2", Unsaved, "*"},
            {"push /a/y [3]", R"({"a":{"x":1,"y":[3]}})",
                "Change /a/y: 2 -> [3]", Unsaved, "*"},
            {"remove /a/y", R"({"a":{"x":1}})",
                "Remove /a/y: [3] -> ()", Unsaved, "*"},
            {"undo", R"({"a":{"x":1,"y":[3]}})",
                "Change /a/y: 2 -> [3]", Unsaved, "Create /a/y: () -> [3]"},
            {"undo", R"({"a":{"x":1,"y":2}})",
                "Create /a/y: () -> 2", Unsaved, "Change /a/y: [3] -> 2"},
            {"undo", R"({"a":{"x":1}})", "", Saved, "Remove /a/y: 2 -> ()"},
            {"redo", R"({"a":{"x":1,"y":2}})",
                "Create /a/y: () -> 2", Unsaved, "*"},
            {"redo", R"({"a":{"x":1,"y":[3]}})",
                "Change /a/y: 2 -> [3]", Unsaved, "*"},
            {"redo", R"({"a":{"x":1}})",
                "Remove /a/y: [3] -> ()", Unsaved, "*"},
            {"redo", R"({"a":{"x":1}})",
                "Remove /a/y: [3] -> ()", Unsaved, ""},
        }},
        {"a push drops what could be redone", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"push /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"undo", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/x: 3 -> 2"},
            {"undo", R"({"a":{"x":1}})", "", Saved, "Change /a/x: 2 -> 1"},
            {"push /a/x 4", R"({"a":{"x":4}})",
                "Change /a/x: 1 -> 4", Unsaved, "*"},
            {"redo", R"({"a":{"x":4}})", "Change /a/x: 1 -> 4", Unsaved, ""},
        }},
        {"missing parents", R"({})", {
            {"push /a/b/c 1", R"({"a":{"b":{"c":1}}})",
                "Create /a/b/c: () -> 1", Unsaved, "*"},
            /* The top-level member stays */
            {"undo", R"({"a":{}})", "", Saved, "Remove /a/b/c: 1 -> ()"},
        }},
        {"a scalar in the way", R"({"a":5})", {
            {"push /a/b 1", R"({"a":{"b":1}})",
                "Create /a/b: () -> 1", Unsaved, "*"},
        }},
        {"escapes", R"({"a":{}})", {
            {"push /a/~01~1 1", R"({"a":{"~1/":1}})",
                "Create /a/~01~1: () -> 1", Unsaved, "*"},
            {"push /a/~01~1 2", R"({"a":{"~1/":2}})",
                "Change /a/~01~1: 1 -> 2", Unsaved, "*"},
            /* Handlers are found by what is written */
            {"push /~1 1", R"({"a":{"~1/":2},"/":1})",
                "Create /~1: () -> 1", Unsaved, "*"},
        }},
        {"empty names", R"({"a":{}})", {
            {"push /a/ 1", R"({"a":{"":1}})",
                "Create /a/: () -> 1", Unsaved, "*"},
            {"push /a/ {}", R"({"a":{"":{}}})",
                "Change /a/: 1 -> {}", Unsaved, "*"},
            {"push /a//x 1", R"({"a":{"":{"x":1}}})",
                "Create /a//x: () -> 1", Unsaved, "*"},
            {"remove /a//x", R"({"a":{}})",
                "Remove /a//x: 1 -> ()", Unsaved, "*"},
        }},
        {"the root", R"({"a":1})", {
            {"push  {\"b\":2}", R"({"b":2})",
                R"(Change : {"a":1} -> {"b":2})", Unsaved, ""},
            {"remove ", R"({"b":2})", R"(Remove : {"b":2} -> ())", Unsaved,
                ""},
            {"undo", R"({"b":2})", R"(Change : {"a":1} -> {"b":2})", Unsaved,
                ""},
            {"undo", R"({"a":1})", "", Saved, ""},
        }},
    });
}

TEST(ChangeManagerTest, removal) {
    check({
        {"empty containers go, up to the top level",
            R"({"a":{"b":{"l":[{"c":1}]}}})", {
            {"remove /a/b/l/0/c", R"({"a":{}})",
                "Remove /a/b/l/0/c: 1 -> ()", Unsaved, "*"},
        }},
        {"others stay", R"({"a":{"b":{"x":{"y":1},"z":{}}}})", {
            {"remove /a/b/x/y", R"({"a":{"b":{"z":{}}}})",
                "Remove /a/b/x/y: 1 -> ()", Unsaved, "*"},
            {"undo", R"({"a":{"b":{"z":{},"x":{"y":1}}}})", "", Saved,
                "Create /a/b/x/y: () -> 1"},
        }},
        {"of a top-level member", R"({"a":1,"list":[]})", {
            {"remove /a", R"({"list":[]})", "Remove /a: 1 -> ()", Unsaved,
                "*"},
            {"undo", R"({"list":[],"a":1})", "", Saved, "Create /a: () -> 1"},
        }},
        {"of what isn't there", R"({"a":{"b":{},"c":1}})", {
            {"remove /a/d", R"({"a":{"b":{},"c":1}})",
                "Create /a/d: () -> ()", Unsaved, "*"},
            {"remove /a/b/x", R"({"a":{"c":1}})",
                "Create /a/b/x: () -> ()", Unsaved, "*"},
            {"remove /a/c/x", R"({"a":{"c":1}})",
                "Create /a/c/x: () -> ()", Unsaved, "*"},
            {"undo", R"({"a":{"c":1}})",
                "Create /a/b/x: () -> ()", Unsaved, "Create /a/c/x: () -> ()"},
        }},
    });
}

TEST(ChangeManagerTest, arrays) {
    check({
        {"a removed element comes back where it was", R"({"list":[1,2,3]})", {
            {"remove /list/1", R"({"list":[1,3]})",
                "Remove /list/1: 2 -> ()", Unsaved, "*"},
            {"remove /list/0", R"({"list":[3]})",
                "Remove /list/0: 1 -> ()", Unsaved, "*"},
            {"undo", R"({"list":[1,3]})", "Remove /list/1: 2 -> ()", Unsaved,
                "Create /list/0: () -> 1"},
            {"undo", R"({"list":[1,2,3]})", "", Saved,
                "Create /list/1: () -> 2"},
        }},
        {"a push replaces", R"({"list":[1,2]})", {
            {"push /list/0 5", R"({"list":[5,2]})",
                "Change /list/0: 1 -> 5", Unsaved, "*"},
            {"undo", R"({"list":[1,2]})", "", Saved,
                "Change /list/0: 5 -> 1"},
        }},
        {"nulls up to the index", R"({"list":[1,2]})", {
            {"push /list/5 6", R"({"list":[1,2,null,null,null,6]})",
                "Create /list/5: () -> 6", Unsaved, "*"},
            {"undo", R"({"list":[1,2,null,null,null]})", "", Saved,
                "Remove /list/5: 6 -> ()"},
        }},
        {"at the end", R"({"list":[1]})", {
            {"push /list/- 2", R"({"list":[1,2]})",
                "Create /list/1: () -> 2", Unsaved, "*"},
            {"push /list/-7 3", R"({"list":[1,2,3]})",
                "Create /list/2: () -> 3", Unsaved, "*"},
            {"push /list/2147483648 4", R"({"list":[1,2,3,4]})",
                "Create /list/3: () -> 4", Unsaved, "*"},
            {"push /list/99999999999999999999 5", R"({"list":[1,2,3,4,5]})",
                "Create /list/4: () -> 5", Unsaved, "*"},
            {"push /list/-99999999999999999999 6",
                R"({"list":[1,2,3,4,5,6]})",
                "Create /list/5: () -> 6", Unsaved, "*"},
            {"undo", R"({"list":[1,2,3,4,5]})",
                "Create /list/4: () -> 5", Unsaved, "Remove /list/5: 6 -> ()"},
            {"redo", R"({"list":[1,2,3,4,5,6]})",
                "Create /list/5: () -> 6", Unsaved, "*"},
        }},
        {"an index that is no pointer", R"({"list":[1,2]})", {
            {"push /list/01 5", R"({"list":[1,5,2]})",
                "Create /list/1: () -> 5", Unsaved, "*"},
            {"push /list/-0 6", R"({"list":[6,1,5,2]})",
                "Create /list/0: () -> 6", Unsaved, "*"},
            {"undo", R"({"list":[1,5,2]})",
                "Create /list/1: () -> 5", Unsaved, "Remove /list/0: 6 -> ()"},
            {"undo", R"({"list":[1,2]})", "", Saved,
                "Remove /list/1: 5 -> ()"},
        }},
        {"below an appended element", R"({"list":[1]})", {
            {"push /list/-/x 2", R"({"list":[1,{"x":2}]})",
                "Create /list/1/x: () -> 2", Unsaved, "*"},
            {"push /list/-/0 3", R"({"list":[1,{"x":2},[3]]})",
                "Create /list/2/0: () -> 3", Unsaved, "*"},
            {"undo", R"({"list":[1,{"x":2}]})",
                "Create /list/1/x: () -> 2", Unsaved,
                "Remove /list/2/0: 3 -> ()"},
            {"undo", R"({"list":[1]})", "", Saved,
                "Remove /list/1/x: 2 -> ()"},
        }},
        {"missing ones", R"({"objects":{}})", {
            {"push /a/1 5", R"({"objects":{},"a":[null,5]})",
                "Create /a/1: () -> 5", Unsaved, "*"},
            {"push /objects/b/-3 5",
                R"({"objects":{"b":[5]},"a":[null,5]})",
                "Create /objects/b/0: () -> 5", Unsaved, "*"},
            /* Nothing tells that it would be an array */
            {"push /objects/c/- 5",
                R"({"objects":{"b":[5],"c":{"-":5}},"a":[null,5]})",
                "Create /objects/c/-: () -> 5", Unsaved, "*"},
        }},
        {"names that are numbers", R"({"objects":{"7":1}})", {
            {"push /objects/5 2", R"({"objects":{"7":1,"5":2}})",
                "Create /objects/5: () -> 2", Unsaved, "*"},
            {"push /objects/-1 3", R"({"objects":{"7":1,"5":2,"-1":3}})",
                "Create /objects/-1: () -> 3", Unsaved, "*"},
            {"push /objects/9/name 4",
                R"({"objects":{"7":1,"5":2,"-1":3,"9":{"name":4}}})",
                "Create /objects/9/name: () -> 4", Unsaved, "*"},
            {"push /list [1]",
                R"({"objects":{"7":1,"5":2,"-1":3,"9":{"name":4}},"list":[1]})",
                "Create /list: () -> [1]", Unsaved, "*"},
            /* A name makes it an object */
            {"push /list/x 1", R"({"objects":{"7":1,"5":2,"-1":3,)"
                R"("9":{"name":4}},"list":{"x":1}})",
                "Create /list/x: () -> 1", Unsaved, "*"},
        }},
        {"dragging a created element", R"({"list":[1],"a":0})", {
            {"push /a 1", R"({"list":[1],"a":1})",
                "Change /a: 0 -> 1", Unsaved, "*"},
            {"drag /list/1 2", R"({"list":[1,2],"a":1})",
                "Create /list/1: () -> 2", Unsaved, "*"},
            {"drag /list/1 3", R"({"list":[1,3],"a":1})",
                "Create /list/1: () -> 3", Unsaved, "*"},
            {"dragRemove /list/1", R"({"list":[1],"a":1})",
                "Create /list/1: () -> ()", Unsaved, "*"},
            {"drag /list/1 4", R"({"list":[1,4],"a":1})",
                "Create /list/1: () -> 4", Unsaved, "*"},
            {"undo", R"({"list":[1],"a":1})",
                "Change /a: 0 -> 1", Unsaved, "Remove /list/1: 4 -> ()"},
        }},
        {"dragging what moved up", R"({"list":[1,2,3],"a":0})", {
            {"push /a 1", R"({"list":[1,2,3],"a":1})",
                "Change /a: 0 -> 1", Unsaved, "*"},
            {"remove /list/1", R"({"list":[1,3],"a":1})",
                "Remove /list/1: 2 -> ()", Unsaved, "*"},
            {"drag /list/1 5", R"({"list":[1,5],"a":1})",
                "Change /list/1: 3 -> 5", Unsaved, "*"},
            {"dragRemove /list/1", R"({"list":[1],"a":1})",
                "Remove /list/1: 3 -> ()", Unsaved, "*"},
            {"undo", R"({"list":[1,3],"a":1})",
                "Remove /list/1: 2 -> ()", Unsaved, "Create /list/1: () -> 3"},
            {"undo", R"({"list":[1,2,3],"a":1})",
                "Change /a: 0 -> 1", Unsaved, "Create /list/1: () -> 2"},
        }},
        {"dragging what moved to a created element", R"({"list":[1],"a":0})", {
            {"push /a 1", R"({"list":[1],"a":1})",
                "Change /a: 0 -> 1", Unsaved, "*"},
            {"push /list/1 2", R"({"list":[1,2],"a":1})",
                "Create /list/1: () -> 2", Unsaved, "*"},
            {"push /list/2 3", R"({"list":[1,2,3],"a":1})",
                "Create /list/2: () -> 3", Unsaved, "*"},
            {"dragRemove /list/1", R"({"list":[1,3],"a":1})",
                "Create /list/1: () -> ()", Unsaved, "*"},
            {"drag /list/1 4", R"({"list":[1,4],"a":1})",
                "Change /list/1: 3 -> 4", Unsaved, "*"},
            {"undo", R"({"list":[1,3],"a":1})",
                "Create /list/1: () -> ()", Unsaved, "Change /list/1: 4 -> 3"},
        }},
    });
}

TEST(ChangeManagerTest, merging) {
    check({
        {"never into the first change", R"({"a":{"x":1}})", {
            {"drag /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"drag /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"drag /a/x 4", R"({"a":{"x":4}})",
                "Change /a/x: 2 -> 4", Unsaved, "*"},
            {"undo", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/x: 4 -> 2"},
            {"undo", R"({"a":{"x":1}})", "", Saved, "Change /a/x: 2 -> 1"},
        }},
        {"only where it is asked for", R"({"a":{"x":1}})", {
            {"push /a/y 1", R"({"a":{"x":1,"y":1}})",
                "Create /a/y: () -> 1", Unsaved, "*"},
            {"push /a/x 2", R"({"a":{"x":2,"y":1}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"push /a/x 3", R"({"a":{"x":3,"y":1}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            /* Into the newest of the path */
            {"drag /a/x 4", R"({"a":{"x":4,"y":1}})",
                "Change /a/x: 2 -> 4", Unsaved, "*"},
            {"undo", R"({"a":{"x":2,"y":1}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/x: 4 -> 2"},
        }},
        {"exchanges with the last change", R"({"a":{"x":1,"y":1,"z":1}})", {
            {"push /a/x 2", R"({"a":{"x":2,"y":1,"z":1}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"push /a/y 2", R"({"a":{"x":2,"y":2,"z":1}})",
                "Change /a/y: 1 -> 2", Unsaved, "*"},
            {"push /a/z 2", R"({"a":{"x":2,"y":2,"z":2}})",
                "Change /a/z: 1 -> 2", Unsaved, "*"},
            {"drag /a/y 3", R"({"a":{"x":2,"y":3,"z":2}})",
                "Change /a/y: 1 -> 3", Unsaved, "*"},
            {"undo", R"({"a":{"x":2,"y":1,"z":2}})",
                "Change /a/z: 1 -> 2", Unsaved, "Change /a/y: 3 -> 1"},
            {"undo", R"({"a":{"x":2,"y":1,"z":1}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/z: 2 -> 1"},
        }},
        {"keeps what can be redone", R"({"a":{"x":1,"y":1}})", {
            {"push /a/y 2", R"({"a":{"x":1,"y":2}})",
                "Change /a/y: 1 -> 2", Unsaved, "*"},
            {"push /a/x 2", R"({"a":{"x":2,"y":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"push /a/y 3", R"({"a":{"x":2,"y":3}})",
                "Change /a/y: 2 -> 3", Unsaved, "*"},
            {"undo", R"({"a":{"x":2,"y":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/y: 3 -> 2"},
            {"drag /a/x 4", R"({"a":{"x":4,"y":2}})",
                "Change /a/x: 1 -> 4", Unsaved, "*"},
            {"redo", R"({"a":{"x":4,"y":3}})",
                "Change /a/y: 2 -> 3", Unsaved, "*"},
        }},
        {"a new change can be forced", R"({"a":{"x":1}})", {
            {"push /a/y 1", R"({"a":{"x":1,"y":1}})",
                "Create /a/y: () -> 1", Unsaved, "*"},
            {"drag /a/x 2", R"({"a":{"x":2,"y":1}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"forceNew", R"({"a":{"x":2,"y":1}})",
                "Change /a/x: 1 -> 2", Unsaved, ""},
            {"drag /a/x 3", R"({"a":{"x":3,"y":1}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"drag /a/x 4", R"({"a":{"x":4,"y":1}})",
                "Change /a/x: 2 -> 4", Unsaved, "*"},
            /* Any push uses it up */
            {"forceNew", R"({"a":{"x":4,"y":1}})",
                "Change /a/x: 2 -> 4", Unsaved, ""},
            {"push /a/y 2", R"({"a":{"x":4,"y":2}})",
                "Change /a/y: 1 -> 2", Unsaved, "*"},
            {"drag /a/x 5", R"({"a":{"x":5,"y":2}})",
                "Change /a/x: 2 -> 5", Unsaved, "*"},
        }},
        {"not across a step", R"({"a":{"x":1}})", {
            {"push /a/y 1", R"({"a":{"x":1,"y":1}})",
                "Create /a/y: () -> 1", Unsaved, "*"},
            {"drag /a/x 2", R"({"a":{"x":2,"y":1}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"beginGroup", R"({"a":{"x":2,"y":1}})",
                "Change /a/x: 1 -> 2", Unsaved, ""},
            {"drag /a/x 3", R"({"a":{"x":3,"y":1}})",
                "Change /a/x: 2 -> 3", Unsaved, ""},
            {"drag /a/x 4", R"({"a":{"x":4,"y":1}})",
                "Change /a/x: 2 -> 4", Unsaved, ""},
            {"commit", R"({"a":{"x":4,"y":1}})",
                "Change /a/x: 2 -> 4", Unsaved, "*"},
            {"drag /a/y 2", R"({"a":{"x":4,"y":2}})",
                "Change /a/y: 1 -> 2", Unsaved, "*"},
            {"drag /a/x 5", R"({"a":{"x":5,"y":2}})",
                "Change /a/x: 4 -> 5", Unsaved, "*"},
        }},
        {"creations and removals", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"drag /a/y 1", R"({"a":{"x":2,"y":1}})",
                "Create /a/y: () -> 1", Unsaved, "*"},
            {"drag /a/y 2", R"({"a":{"x":2,"y":2}})",
                "Create /a/y: () -> 2", Unsaved, "*"},
            {"dragRemove /a/x", R"({"a":{"y":2}})",
                "Remove /a/x: 2 -> ()", Unsaved, "*"},
            {"drag /a/x 5", R"({"a":{"y":2,"x":5}})",
                "Change /a/x: 2 -> 5", Unsaved, "*"},
            {"dragRemove /a/y", R"({"a":{"x":5}})",
                "Create /a/y: () -> ()", Unsaved, "*"},
            {"undo", R"({"a":{"x":5}})", "Change /a/x: 2 -> 5", Unsaved,
                "Create /a/y: () -> ()"},
        }},
        {"numbers in place", R"({"a":{"x":[1,2.5],"y":1}})", {
            {"push /a/y 2", R"({"a":{"x":[1,2.5],"y":2}})",
                "Change /a/y: 1 -> 2", Unsaved, "*"},
            {"drag /a/x [2,3]", R"({"a":{"x":[2,3],"y":2}})",
                "Change /a/x: [1,2.5] -> [2,3]", Unsaved, "*"},
            {"drag /a/x [4,5.5]", R"({"a":{"x":[4,5.5],"y":2}})",
                "Change /a/x: [1,2.5] -> [4,5.5]", Unsaved, "*"},
            {"drag /a/x [6]", R"({"a":{"x":[6],"y":2}})",
                "Change /a/x: [1,2.5] -> [6]", Unsaved, "*"},
            {"undo", R"({"a":{"x":[1,2.5],"y":2}})",
                "Change /a/y: 1 -> 2", Unsaved, "Change /a/x: [6] -> [1,2.5]"},
        }},
    });
}

TEST(ChangeManagerTest, groups) {
    check({
        {"one step, told on commit", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"beginGroup", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, ""},
            {"push /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, ""},
            {"push /a/y 1", R"({"a":{"x":3,"y":1}})",
                "Create /a/y: () -> 1", Unsaved, ""},
            {"remove /a/x", R"({"a":{"y":1}})",
                "Remove /a/x: 3 -> ()", Unsaved, ""},
            {"commit", R"({"a":{"y":1}})", "Remove /a/x: 3 -> ()", Unsaved,
                "Change /a/x: 2 -> 3; Create /a/y: () -> 1; "
                "Remove /a/x: 3 -> ()"},
            {"undo", R"({"a":{"x":2}})", "Change /a/x: 1 -> 2", Unsaved,
                "Create /a/x: () -> 3; Remove /a/y: 1 -> (); "
                "Change /a/x: 3 -> 2"},
            {"redo", R"({"a":{"y":1}})", "Remove /a/x: 3 -> ()", Unsaved,
                "Change /a/x: 2 -> 3; Create /a/y: () -> 1; "
                "Remove /a/x: 3 -> ()"},
        }},
        {"empty", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"beginGroup", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, ""},
            {"commit", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, ""},
            {"undo", R"({"a":{"x":1}})", "", Saved, "Change /a/x: 2 -> 1"},
        }},
        {"commit without one tells again", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"push /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"commit", R"({"a":{"x":3}})", "Change /a/x: 2 -> 3", Unsaved,
                "Change /a/x: 1 -> 2; Change /a/x: 2 -> 3"},
            {"undo", R"({"a":{"x":2}})", "Change /a/x: 1 -> 2", Unsaved,
                "Change /a/x: 3 -> 2"},
            {"commit", R"({"a":{"x":2}})", "Change /a/x: 1 -> 2", Unsaved,
                "*"},
        }},
        {"begun within another", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"beginGroup", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, ""},
            {"push /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, ""},
            {"beginGroup", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, ""},
            {"push /a/x 4", R"({"a":{"x":4}})",
                "Change /a/x: 3 -> 4", Unsaved, ""},
            {"commit", R"({"a":{"x":4}})", "Change /a/x: 3 -> 4", Unsaved,
                "*"},
            {"undo", R"({"a":{"x":3}})", "Change /a/x: 2 -> 3", Unsaved,
                "Change /a/x: 4 -> 3"},
            {"undo", R"({"a":{"x":2}})", "Change /a/x: 1 -> 2", Unsaved,
                "Change /a/x: 3 -> 2"},
            {"redo", R"({"a":{"x":3}})", "Change /a/x: 2 -> 3", Unsaved, "*"},
        }},
    });
}

TEST(ChangeManagerTest, saveMark) {
    check({
        {"undo and redo", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"markSave", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Saved, ""},
            {"push /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"undo", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Saved, "Change /a/x: 3 -> 2"},
            {"redo", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"undo", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Saved, "Change /a/x: 3 -> 2"},
            {"undo", R"({"a":{"x":1}})", "", Unsaved, "Change /a/x: 2 -> 1"},
        }},
        {"the saved state was dropped", R"({"a":{"x":1}})", {
            {"push /a/x 2", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"push /a/x 3", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "*"},
            {"push /a/x 4", R"({"a":{"x":4}})",
                "Change /a/x: 3 -> 4", Unsaved, "*"},
            {"markSave", R"({"a":{"x":4}})",
                "Change /a/x: 3 -> 4", Saved, ""},
            {"undo", R"({"a":{"x":3}})",
                "Change /a/x: 2 -> 3", Unsaved, "Change /a/x: 4 -> 3"},
            {"undo", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/x: 3 -> 2"},
            {"push /a/x 5", R"({"a":{"x":5}})",
                "Change /a/x: 2 -> 5", Unsaved, "*"},
            {"push /a/x 6", R"({"a":{"x":6}})",
                "Change /a/x: 5 -> 6", Unsaved, "*"},
            {"undo", R"({"a":{"x":5}})",
                "Change /a/x: 2 -> 5", Unsaved, "Change /a/x: 6 -> 5"},
            {"undo", R"({"a":{"x":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "Change /a/x: 5 -> 2"},
            {"undo", R"({"a":{"x":1}})", "", Saved, "Change /a/x: 2 -> 1"},
        }},
        {"a merge doesn't touch it", R"({"a":{"x":1,"y":1}})", {
            {"push /a/y 2", R"({"a":{"x":1,"y":2}})",
                "Change /a/y: 1 -> 2", Unsaved, "*"},
            {"drag /a/x 2", R"({"a":{"x":2,"y":2}})",
                "Change /a/x: 1 -> 2", Unsaved, "*"},
            {"markSave", R"({"a":{"x":2,"y":2}})",
                "Change /a/x: 1 -> 2", Saved, ""},
            {"drag /a/x 3", R"({"a":{"x":3,"y":2}})",
                "Change /a/x: 1 -> 3", Saved, "*"},
            {"forceNew", R"({"a":{"x":3,"y":2}})",
                "Change /a/x: 1 -> 3", Saved, ""},
            {"drag /a/x 4", R"({"a":{"x":4,"y":2}})",
                "Change /a/x: 3 -> 4", Unsaved, "*"},
        }},
    });
}

TEST(ChangeManagerTest, append) {
    check({
        {"to an array", R"({"list":["x"]})", {
            {"append /list \"y\"", R"({"list":["x","y"]})",
                R"(Change /list: ["x"] -> ["x","y"])", Unsaved, "*"},
            {"append /list \"z\"", R"({"list":["x","y","z"]})",
                R"(Change /list: ["x","y"] -> ["x","y","z"])", Unsaved, "*"},
            {"undo", R"({"list":["x","y"]})",
                R"(Change /list: ["x"] -> ["x","y"])", Unsaved,
                R"(Change /list: ["x","y","z"] -> ["x","y"])"},
        }},
        {"to what isn't one", R"({"a":{"x":1}})", {
            {"append /a/x \"y\"", R"({"a":{"x":["y"]}})",
                R"(Change /a/x: 1 -> ["y"])", Unsaved, "*"},
            {"append /list \"y\"", R"({"a":{"x":["y"]},"list":["y"]})",
                R"(Create /list: () -> ["y"])", Unsaved, "*"},
        }},
    });
}

/* The numbers of what was pushed, as they are stored */
std::vector<double> numbers(Fixture& fixture, const char* path) {
    std::vector<double> out;
    const JsonValue* const value = fixture.project.find(path);
    if(!value || !value->IsArray())
        return out;
    for(const JsonValue& number: value->GetArray()) {
        EXPECT_TRUE(number.IsDouble());
        out.push_back(number.GetDouble());
    }
    return out;
}

TEST(ChangeManagerTest, typedValues) {
    Fixture fixture{R"({"a":{}})"};
    {
        /* Neither terminated nor there afterwards */
        const std::string text = "textual";
        fixture.manager.pushChange("/a/text",
            Containers::StringView{text.data(), 4}, false);
    }
    fixture.manager.pushChange("/a/none", Containers::StringView{}, false);
    EXPECT_EQ(fixture.document(), R"({"a":{"text":"text","none":""}})");

    fixture.manager.pushChange("/a/vector",
        Magnum::Math::Vector3<float>{1.0f, -2.0f, 0.1f}, false);
    EXPECT_EQ(numbers(fixture, "/a/vector"),
        (std::vector<double>{1.0, -2.0, 0.100000001490116119384765625}));

    fixture.manager.pushChange("/a/rotation",
        Magnum::Math::Quaternion<float>{{1.0f, 2.0f, 3.0f}, 0.1f}, false);
    EXPECT_EQ(numbers(fixture, "/a/rotation"),
        (std::vector<double>{1.0, 2.0, 3.0, 0.100000001490116119384765625}));
}

TEST(ChangeManagerTest, transform) {
    typedef Magnum::Math::Matrix4<float> Matrix4;
    Fixture fixture{R"({"a":{"x":1}})"};
    fixture.perform("push /a/x 2");
    fixture.told.clear();

    fixture.manager.pushTransformChange("/a", Matrix4::translation({1, 2, 3}),
        true);
    EXPECT_EQ(fixture.told,
        "Create /a/translation: () -> [1.0,2.0,3.0]; "
        "Create /a/rotation: () -> [0.0,0.0,0.0,1.0]; "
        "Create /a/scaling: () -> [1.0,1.0,1.0]");

    /* Merges, which turns the order around */
    fixture.manager.pushTransformChange("/a", Matrix4::translation({4, 5, 6}),
        true);
    fixture.told.clear();
    for(int i = 0; i != 4; ++i)
        fixture.manager.undoLast();
    EXPECT_EQ(fixture.told,
        "Remove /a/scaling: [1.0,1.0,1.0] -> (); "
        "Remove /a/translation: [4.0,5.0,6.0] -> (); "
        "Remove /a/rotation: [0.0,0.0,0.0,1.0] -> (); "
        "Change /a/x: 2 -> 1");
    EXPECT_EQ(fixture.document(), R"({"a":{"x":1}})");
}

/* Nothing is shared with what is pushed or with the document */
TEST(ChangeManagerTest, ownership) {
    Fixture fixture{R"({"a":{"x":{"y":[1]},"z":"z"}})"};
    JsonAllocator& allocator = fixture.manager.allocator();
    EXPECT_EQ(&allocator, &fixture.project.allocator());
    fixture.perform("push /a/w 0");

    /* A value of the document, below itself */
    fixture.manager.pushChange("/a/x/y/0", *fixture.project.find("/a/x"),
        true);
    EXPECT_EQ(fixture.document(),
        R"({"a":{"x":{"y":[{"y":[1]}]},"z":"z","w":0}})");
    /* A value of the change that's merged into, and a part of it */
    fixture.manager.pushChange("/a/x/y/0", *fixture.manager.lastChange().newValue,
        true);
    fixture.manager.pushChange("/a/x/y/0",
        (*fixture.manager.lastChange().newValue)["y"], true);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":{"y":[[1]]},"z":"z","w":0}})");
    /* A value of a change that's about to be dropped */
    fixture.manager.undoLast();
    fixture.manager.redoLastUndo();
    const Change& dropped = fixture.manager.lastChange();
    fixture.manager.undoLast();
    fixture.manager.pushChange("/a/z", *dropped.newValue, false);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":{"y":[1]},"z":[1],"w":0}})");

    /* Editing the document directly doesn't change the history */
    fixture.project.find("/a/z")->PushBack(2, allocator);
    EXPECT_EQ(printed(fixture.manager.lastChange()),
        R"(Change /a/z: "z" -> [1])");

    /* A text that is only referred to is copied all the same */
    char text[]{"text"};
    JsonValue list{rapidjson::kArrayType};
    list.PushBack(rapidjson::StringRef(text), allocator);
    JsonValue record{rapidjson::kObjectType};
    record.AddMember(rapidjson::StringRef(text), list, allocator);
    fixture.manager.pushChange("/a/z", record, true);
    text[0] = '?';
    EXPECT_EQ(printed(fixture.manager.lastChange()),
        R"(Change /a/z: "z" -> {"text":["text"]})");
    EXPECT_EQ(fixture.document(),
        R"({"a":{"x":{"y":[1]},"z":{"text":["text"]},"w":0}})");
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
    EXPECT_EQ(fixture.told, "Create /a/y: () -> 5");
    EXPECT_EQ(printed(fixture.manager.lastChange()), "Change /a/x: 1 -> 2");

    const Change reversed = fixture.manager.reverse(change);
    EXPECT_EQ(printed(reversed), "Remove /a/y: 5 -> ()");
    EXPECT_EQ(reversed.group, -1);
    EXPECT_EQ(printed(change), "Create /a/y: () -> 5");

    fixture.manager.undo(change);
    EXPECT_EQ(fixture.document(), R"({"a":{"x":2}})");
    EXPECT_FALSE(fixture.manager.hasUnsavedChanges());
}

TEST(ChangeManagerTest, moveChange) {
    const auto created = [](const char* path, int oldValue, int newValue,
        int group) {
        Change out;
        out.path = path;
        out.oldValue.emplace(oldValue);
        out.newValue.emplace(newValue);
        out.group = group;
        return out;
    };
    Change a = created("/a", 1, 2, 3);
    Change b{std::move(a)};
    EXPECT_FALSE(a.oldValue);
    EXPECT_FALSE(a.newValue);
    EXPECT_EQ(printed(b), "Change /a: 1 -> 2");
    EXPECT_EQ(b.group, 3);

    Change c = created("/c", 4, 5, 6);
    c = std::move(b);
    EXPECT_EQ(printed(c), "Change /a: 1 -> 2");
    EXPECT_EQ(c.group, 3);
    ASSERT_TRUE(b.oldValue && b.newValue);
    EXPECT_EQ(b.oldValue->GetInt(), 4);
    EXPECT_EQ(b.newValue->GetInt(), 5);
}

TEST(ChangeManagerTest, print) {
    const struct {
        const char* oldValue;
        const char* newValue;
        const char* expected;
    } cases[]{
        {"\"old\"", "[1]", "Change /a/b: \"old\" -> [1]"},
        {"\"old\"", nullptr, "Remove /a/b: \"old\" -> ()"},
        {nullptr, "null", "Create /a/b: () -> null"},
        {nullptr, nullptr, "Create /a/b: () -> ()"},
    };
    for(const auto& i: cases) {
        JsonDocument oldValue, newValue;
        Change change;
        change.path = "/a/b";
        if(i.oldValue)
            change.oldValue.emplace(
                std::move(oldValue.Parse(i.oldValue).Move()));
        if(i.newValue)
            change.newValue.emplace(
                std::move(newValue.Parse(i.newValue).Move()));
        EXPECT_EQ(printed(change), i.expected);
    }
}

struct Told {
    static void handle(const Change&,
        Containers::ArrayView<Containers::StringView> path, void* userData) {
        Told& self = *static_cast<Told*>(userData);
        ++self.count;
        self.segments.clear();
        for(const Containers::StringView segment: path)
            self.segments.emplace_back(segment.data(), segment.size());
    }

    int count = 0;
    std::vector<std::string> segments;
};

TEST(ChangeManagerTest, handlers) {
    ProjectFile project;
    ChangeManager manager{project};
    Told a, b, b2;
    manager.addChangeHandler("a", Told::handle, &a);
    manager.addChangeHandler("b", Told::handle, &b);

    manager.pushChange("/b//b/c", "", false);
    EXPECT_EQ(a.count, 0);
    /* Once for each time it occurs */
    EXPECT_EQ(b.count, 2);
    EXPECT_EQ(b.segments, (std::vector<std::string>{"", "b", "", "b", "c"}));
    /* Not by part of a segment */
    manager.pushChange("/ab/bb", "", false);
    EXPECT_EQ(b.count, 2);

    /* All are found however many there are, the second of one segment too */
    std::vector<Told> many(40);
    for(std::size_t i = 0; i != many.size(); ++i)
        manager.addChangeHandler(view("n" + std::to_string(i)), Told::handle,
            &many[i]);
    manager.addChangeHandler("b", Told::handle, &b2);
    manager.pushChange("/a/b/n0/n39", "", false);
    EXPECT_EQ(a.count, 1);
    EXPECT_EQ(b.count, 3);
    EXPECT_EQ(b2.count, 1);
    for(std::size_t i = 0; i != many.size(); ++i)
        EXPECT_EQ(many[i].count, i == 0 || i == 39);
}

struct CountingHandler: ChangeHandler {
    explicit CountingHandler(int& d): destroyed(d) {}
    ~CountingHandler() override { ++destroyed; }
    void handle(const Change&,
        Containers::ArrayView<Containers::StringView>) override {}

    int& destroyed;
};

TEST(ChangeManagerTest, reset) {
    ProjectFile first, second;
    ChangeManager manager;
    manager.reset(first);
    int destroyed = 0;
    manager.addChangeHandler("a",
        Containers::Pointer<ChangeHandler>{new CountingHandler{destroyed}});
    manager.pushChange("/a", "x", false);
    manager.markSave();
    manager.beginGroup();
    manager.forceNewContinuousChange();

    manager.reset(second);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(&manager.allocator(), &second.allocator());
    /* The save mark stays */
    EXPECT_TRUE(manager.hasUnsavedChanges());
    manager.pushChange("/a", "x", false);
    manager.pushChange("/a", "y", true);
    EXPECT_EQ(printed(manager.lastChange()), R"(Change /a: "x" -> "y")");
    EXPECT_EQ(jsonText(first.document), R"({"a":"x"})");
    EXPECT_EQ(jsonText(second.document), R"({"a":"y"})");
    /* So does the group */
    EXPECT_EQ(manager.lastChange().group, 1);
    manager.commit();
    manager.undoLast();
    EXPECT_EQ(jsonText(second.document), "{}");
}

TEST(ChangeManagerTest, registerFromHandler) {
    ProjectFile project;
    ChangeManager manager{project};
    struct Registering {
        ChangeManager& changeManager;
        Told told;
        bool done;
    } state{manager, {}, false};
    manager.addChangeHandler("a",
        [](const Change&, Containers::ArrayView<Containers::StringView>,
            void* userData) {
            Registering& self = *static_cast<Registering*>(userData);
            if(self.done)
                return;
            self.done = true;
            /* Enough to have the lists of handlers move */
            for(int i = 0; i != 20; ++i)
                self.changeManager.addChangeHandler(view("n" + std::to_string(i)),
                    Told::handle, &self.told);
            self.changeManager.addChangeHandler("a", Told::handle, &self.told);
        },
        &state);

    /* Told of from the next one on, even in a commit */
    manager.beginGroup();
    manager.pushChange("/a/n7", "", false);
    manager.pushChange("/a/n8", "", false);
    manager.commit();
    EXPECT_EQ(state.told.count, 2);
    manager.pushChange("/a", "", false);
    EXPECT_EQ(state.told.count, 3);
}

/* All that a handler must not do */
TEST(ChangeManagerDeathTest, fromHandler) {
    const struct {
        void (*call)(ChangeManager&, ProjectFile&);
        const char* message;
    } cases[]{
        {[](ChangeManager& m, ProjectFile&) { m.pushChange("/a", "", true); },
            "pushChange(): Can't push changes"},
        {[](ChangeManager& m, ProjectFile&) { m.pushRemoval("/a"); },
            "pushChange(): Can't push changes"},
        {[](ChangeManager& m, ProjectFile&) { m.pushAppend("/a", ""); },
            "pushChange(): Can't push changes"},
        {[](ChangeManager& m, ProjectFile&) { m.undoLast(); },
            "undoLast(): Can't undo/redo changes"},
        {[](ChangeManager& m, ProjectFile&) { m.redoLastUndo(); },
            "redoLastUndo(): Can't undo/redo changes"},
        {[](ChangeManager& m, ProjectFile&) { m.undo(m.lastChange()); },
            "undo(): Can't undo/redo changes"},
        {[](ChangeManager& m, ProjectFile&) { m.applyChange(m.lastChange()); },
            "applyChange(): Can't apply changes"},
        {[](ChangeManager& m, ProjectFile&) { m.beginGroup(); },
            "beginGroup(): Can't begin a group"},
        {[](ChangeManager& m, ProjectFile&) { m.commit(); },
            "commit(): Can't commit a group"},
        {[](ChangeManager& m, ProjectFile& p) { m.reset(p); },
            "reset(): Can't reset"},
    };
    for(const auto& i: cases) {
        ProjectFile project;
        ChangeManager manager{project};
        manager.addChangeHandler("a",
            [&](const Change&, Containers::ArrayView<Containers::StringView>,
                void*) { i.call(manager, project); },
            nullptr);
        EXPECT_DEATH(manager.pushChange("/a", "", false),
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
}

TEST(ChangeManagerDeathTest, invalid) {
    Fixture fixture{R"({"a":5})"};
    EXPECT_DEATH(fixture.manager.lastChange(),
        "^Assertion _lastChange >= 0 && .*_lastChange.* < _changes\\.size\\(\\)"
        " failed at src/ChangeManager\\.cpp:[0-9]+\n$");
    /* An element of what is no array */
    EXPECT_DEATH(fixture.perform("push /a/0 1"),
        "^Assertion parent->IsArray\\(\\) failed at "
        "src/ChangeManager\\.cpp:[0-9]+\n$");
    EXPECT_DEATH(fixture.manager.addChangeHandler("", Told::handle, nullptr),
        testing::Eq("StaticMap::put(): key cannot be nullptr.\n"));
}

}}}

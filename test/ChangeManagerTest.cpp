#include <string>
#include <vector>
#include <gtest/gtest.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <Magnum/Math/Vector3.h>

#include "ChangeOperation.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace Test { namespace {

/* JSON with single quotes */
std::string json(std::string text) {
    for(char& c: text)
        c = c == '\'' ? '"' : c;
    return text;
}

/* What is the case after an operation, with JSON in single quotes */
struct State {
    /* As text of a ChangeOperation */
    std::string operation;
    std::string document;
    /* The change made last, empty if there is none */
    std::string last;
    /* Changes that the handler of each top-level member was told of, "*" for
       the one above */
    std::string told = "*";
    bool unsaved = true;
};

struct Case {
    const char* name;
    const char* document;
    std::vector<State> states;
};

constexpr bool Saved = false;

class Fixture {
public:
    explicit Fixture(const std::string& document): manager{project} {
        project.document.Parse(json(document).data());
        for(const char* segment: {"a", "list", "objects", "~1"})
            manager.addChangeHandler(segment, tell, &told);
    }

    static void tell(const Change& change,
        Containers::ArrayView<Containers::StringView>, void* userData) {
        std::string& out = *static_cast<std::string*>(userData);
        out += (out.empty() ? "" : "; ") + printed(change);
    }

    void perform(const std::string& operation) {
        told.clear();
        ChangeOperation{json(operation).data()}.perform(manager);
    }

    std::string document() { return jsonText(project.document); }

    ProjectFile project;
    ChangeManager manager;
    std::string told;
};

void checkState(Fixture& fixture, const State& expected) {
    SCOPED_TRACE(expected.operation);
    const std::string document = json(expected.document);
    const std::string last = json(expected.last);
    EXPECT_EQ(fixture.document(), document);
    EXPECT_EQ(fixture.manager.hasUnsavedChanges(), expected.unsaved);
    EXPECT_EQ(fixture.told, expected.told == "*" ? last : json(expected.told));
    if(!last.empty()) {
        EXPECT_EQ(printed(fixture.manager.lastChange()), last);
        return;
    }
    fixture.told.clear();
    fixture.manager.undoLast();
    EXPECT_EQ(fixture.document(), document);
    EXPECT_EQ(fixture.told, "");
}

void check(const std::vector<Case>& cases) {
    for(const Case& i: cases) {
        SCOPED_TRACE(i.name);
        Fixture fixture{i.document};
        checkState(fixture, {"fresh", i.document, "", "", Saved});
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
        {"nothing to undo or redo", "{'a':1}",
            {
                {"undo", "{'a':1}", "", "", Saved},
                {"redo", "{'a':1}", "", "", Saved},
            }},
        {"create, change, remove", "{'a':{'x':1}}",
            {
                {"push /a/y 2", "{'a':{'x':1,'y':2}}", "Create /a/y: () -> 2"},
                {"push /a/y [3]", "{'a':{'x':1,'y':[3]}}",
                    "Change /a/y: 2 -> [3]"},
                {"remove /a/y", "{'a':{'x':1}}", "Remove /a/y: [3] -> ()"},
                {"undo", "{'a':{'x':1,'y':[3]}}", "Change /a/y: 2 -> [3]",
                    "Create /a/y: () -> [3]"},
                {"undo", "{'a':{'x':1,'y':2}}", "Create /a/y: () -> 2",
                    "Change /a/y: [3] -> 2"},
                {"undo", "{'a':{'x':1}}", "", "Remove /a/y: 2 -> ()", Saved},
                {"redo", "{'a':{'x':1,'y':2}}", "Create /a/y: () -> 2"},
                {"redo", "{'a':{'x':1,'y':[3]}}", "Change /a/y: 2 -> [3]"},
                {"redo", "{'a':{'x':1}}", "Remove /a/y: [3] -> ()"},
                {"redo", "{'a':{'x':1}}", "Remove /a/y: [3] -> ()", ""},
            }},
        {"a push drops what could be redone", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"push /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 3 -> 2"},
                {"undo", "{'a':{'x':1}}", "", "Change /a/x: 2 -> 1", Saved},
                {"push /a/x 4", "{'a':{'x':4}}", "Change /a/x: 1 -> 4"},
                {"redo", "{'a':{'x':4}}", "Change /a/x: 1 -> 4", ""},
            }},
        {"missing parents", "{}",
            {
                {"push /a/b/c 1", "{'a':{'b':{'c':1}}}",
                    "Create /a/b/c: () -> 1"},
                /* The top-level member stays */
                {"undo", "{'a':{}}", "", "Remove /a/b/c: 1 -> ()", Saved},
            }},
        {"a scalar in the way", "{'a':5}",
            {
                {"push /a/b 1", "{'a':{'b':1}}", "Create /a/b: () -> 1"},
            }},
        {"escapes", "{'a':{}}",
            {
                {"push /a/~01~1 1", "{'a':{'~1/':1}}",
                    "Create /a/~01~1: () -> 1"},
                {"push /a/~01~1 2", "{'a':{'~1/':2}}",
                    "Change /a/~01~1: 1 -> 2"},
                /* Handlers are found by what is written */
                {"push /~1 1", "{'a':{'~1/':2},'/':1}", "Create /~1: () -> 1"},
            }},
        {"empty names", "{'a':{}}",
            {
                {"push /a/ 1", "{'a':{'':1}}", "Create /a/: () -> 1"},
                {"push /a/ {}", "{'a':{'':{}}}", "Change /a/: 1 -> {}"},
                {"push /a//x 1", "{'a':{'':{'x':1}}}", "Create /a//x: () -> 1"},
                {"remove /a//x", "{'a':{}}", "Remove /a//x: 1 -> ()"},
            }},
        {"the root", "{'a':1}",
            {
                {"push  {'b':2}", "{'b':2}", "Change : {'a':1} -> {'b':2}", ""},
                {"remove ", "{'b':2}", "Remove : {'b':2} -> ()", ""},
                {"undo", "{'b':2}", "Change : {'a':1} -> {'b':2}", ""},
                {"undo", "{'a':1}", "", "", Saved},
            }},
    });
}

TEST(ChangeManagerTest, removal) {
    check({
        {"empty containers go, up to the top level",
            "{'a':{'b':{'l':[{'c':1}]}}}",
            {
                {"remove /a/b/l/0/c", "{'a':{}}", "Remove /a/b/l/0/c: 1 -> ()"},
            }},
        {"others stay", "{'a':{'b':{'x':{'y':1},'z':{}}}}",
            {
                {"remove /a/b/x/y", "{'a':{'b':{'z':{}}}}",
                    "Remove /a/b/x/y: 1 -> ()"},
                {"undo", "{'a':{'b':{'z':{},'x':{'y':1}}}}", "",
                    "Create /a/b/x/y: () -> 1", Saved},
            }},
        {"of a top-level member", "{'a':1,'list':[]}",
            {
                {"remove /a", "{'list':[]}", "Remove /a: 1 -> ()"},
                {"undo", "{'list':[],'a':1}", "", "Create /a: () -> 1", Saved},
            }},
        {"of what isn't there", "{'a':{'b':{},'c':1}}",
            {
                {"remove /a/d", "{'a':{'b':{},'c':1}}",
                    "Create /a/d: () -> ()"},
                {"remove /a/b/x", "{'a':{'c':1}}", "Create /a/b/x: () -> ()"},
                {"remove /a/c/x", "{'a':{'c':1}}", "Create /a/c/x: () -> ()"},
                {"undo", "{'a':{'c':1}}", "Create /a/b/x: () -> ()",
                    "Create /a/c/x: () -> ()"},
            }},
    });
}

TEST(ChangeManagerTest, arrays) {
    check({
        {"a removed element comes back where it was", "{'list':[1,2,3]}",
            {
                {"remove /list/1", "{'list':[1,3]}", "Remove /list/1: 2 -> ()"},
                {"remove /list/0", "{'list':[3]}", "Remove /list/0: 1 -> ()"},
                {"undo", "{'list':[1,3]}", "Remove /list/1: 2 -> ()",
                    "Create /list/0: () -> 1"},
                {"undo", "{'list':[1,2,3]}", "", "Create /list/1: () -> 2",
                    Saved},
            }},
        {"a push replaces", "{'list':[1,2]}",
            {
                {"push /list/0 5", "{'list':[5,2]}", "Change /list/0: 1 -> 5"},
                {"undo", "{'list':[1,2]}", "", "Change /list/0: 5 -> 1", Saved},
            }},
        {"nulls up to the index", "{'list':[1,2]}",
            {
                {"push /list/5 6", "{'list':[1,2,null,null,null,6]}",
                    "Create /list/5: () -> 6"},
                {"undo", "{'list':[1,2,null,null,null]}", "",
                    "Remove /list/5: 6 -> ()", Saved},
            }},
        {"at the end", "{'list':[1]}",
            {
                {"push /list/- 2", "{'list':[1,2]}", "Create /list/1: () -> 2"},
                {"push /list/-7 3", "{'list':[1,2,3]}",
                    "Create /list/2: () -> 3"},
                {"push /list/2147483648 4", "{'list':[1,2,3,4]}",
                    "Create /list/3: () -> 4"},
                {"push /list/99999999999999999999 5", "{'list':[1,2,3,4,5]}",
                    "Create /list/4: () -> 5"},
                {"push /list/-99999999999999999999 6", "{'list':[1,2,3,4,5,6]}",
                    "Create /list/5: () -> 6"},
                {"undo", "{'list':[1,2,3,4,5]}", "Create /list/4: () -> 5",
                    "Remove /list/5: 6 -> ()"},
                {"redo", "{'list':[1,2,3,4,5,6]}", "Create /list/5: () -> 6"},
            }},
        {"an index that is no pointer", "{'list':[1,2]}",
            {
                {"push /list/01 5", "{'list':[1,5,2]}",
                    "Create /list/1: () -> 5"},
                {"push /list/-0 6", "{'list':[6,1,5,2]}",
                    "Create /list/0: () -> 6"},
                {"undo", "{'list':[1,5,2]}", "Create /list/1: () -> 5",
                    "Remove /list/0: 6 -> ()"},
                {"undo", "{'list':[1,2]}", "", "Remove /list/1: 5 -> ()",
                    Saved},
            }},
        {"below an appended element", "{'list':[1]}",
            {
                {"push /list/-/x 2", "{'list':[1,{'x':2}]}",
                    "Create /list/1/x: () -> 2"},
                {"push /list/-/0 3", "{'list':[1,{'x':2},[3]]}",
                    "Create /list/2/0: () -> 3"},
                {"undo", "{'list':[1,{'x':2}]}", "Create /list/1/x: () -> 2",
                    "Remove /list/2/0: 3 -> ()"},
                {"undo", "{'list':[1]}", "", "Remove /list/1/x: 2 -> ()",
                    Saved},
            }},
        {"missing ones", "{'objects':{}}",
            {
                {"push /a/1 5", "{'objects':{},'a':[null,5]}",
                    "Create /a/1: () -> 5"},
                {"push /objects/b/-3 5", "{'objects':{'b':[5]},'a':[null,5]}",
                    "Create /objects/b/0: () -> 5"},
                /* Nothing tells that it would be an array */
                {"push /objects/c/- 5",
                    "{'objects':{'b':[5],'c':{'-':5}},'a':[null,5]}",
                    "Create /objects/c/-: () -> 5"},
            }},
        {"names that are numbers", "{'objects':{'7':1}}",
            {
                {"push /objects/5 2", "{'objects':{'7':1,'5':2}}",
                    "Create /objects/5: () -> 2"},
                {"push /objects/-1 3", "{'objects':{'7':1,'5':2,'-1':3}}",
                    "Create /objects/-1: () -> 3"},
                {"push /objects/9/name 4",
                    "{'objects':{'7':1,'5':2,'-1':3,'9':{'name':4}}}",
                    "Create /objects/9/name: () -> 4"},
                {"push /list [1]",
                    "{'objects':{'7':1,'5':2,'-1':3,'9':{'name':4}},'list':[1]}",
                    "Create /list: () -> [1]"},
                /* A name makes it an object */
                {"push /list/x 1",
                    "{'objects':{'7':1,'5':2,'-1':3,'9':{'name':4}},"
                    "'list':{'x':1}}",
                    "Create /list/x: () -> 1"},
            }},
        {"dragging a created element", "{'list':[1],'a':0}",
            {
                {"push /a 1", "{'list':[1],'a':1}", "Change /a: 0 -> 1"},
                {"drag /list/1 2", "{'list':[1,2],'a':1}",
                    "Create /list/1: () -> 2"},
                {"drag /list/1 3", "{'list':[1,3],'a':1}",
                    "Create /list/1: () -> 3"},
                {"dragRemove /list/1", "{'list':[1],'a':1}",
                    "Create /list/1: () -> ()"},
                {"drag /list/1 4", "{'list':[1,4],'a':1}",
                    "Create /list/1: () -> 4"},
                {"undo", "{'list':[1],'a':1}", "Change /a: 0 -> 1",
                    "Remove /list/1: 4 -> ()"},
            }},
        {"dragging what moved up", "{'list':[1,2,3],'a':0}",
            {
                {"push /a 1", "{'list':[1,2,3],'a':1}", "Change /a: 0 -> 1"},
                {"remove /list/1", "{'list':[1,3],'a':1}",
                    "Remove /list/1: 2 -> ()"},
                {"drag /list/1 5", "{'list':[1,5],'a':1}",
                    "Change /list/1: 3 -> 5"},
                {"dragRemove /list/1", "{'list':[1],'a':1}",
                    "Remove /list/1: 3 -> ()"},
                {"undo", "{'list':[1,3],'a':1}", "Remove /list/1: 2 -> ()",
                    "Create /list/1: () -> 3"},
                {"undo", "{'list':[1,2,3],'a':1}", "Change /a: 0 -> 1",
                    "Create /list/1: () -> 2"},
            }},
        {"dragging what moved to a created element", "{'list':[1],'a':0}",
            {
                {"push /a 1", "{'list':[1],'a':1}", "Change /a: 0 -> 1"},
                {"push /list/1 2", "{'list':[1,2],'a':1}",
                    "Create /list/1: () -> 2"},
                {"push /list/2 3", "{'list':[1,2,3],'a':1}",
                    "Create /list/2: () -> 3"},
                {"dragRemove /list/1", "{'list':[1,3],'a':1}",
                    "Create /list/1: () -> ()"},
                {"drag /list/1 4", "{'list':[1,4],'a':1}",
                    "Change /list/1: 3 -> 4"},
                {"undo", "{'list':[1,3],'a':1}", "Create /list/1: () -> ()",
                    "Change /list/1: 4 -> 3"},
            }},
    });
}

TEST(ChangeManagerTest, merging) {
    check({
        {"never into the first change", "{'a':{'x':1}}",
            {
                {"drag /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"drag /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
                {"drag /a/x 4", "{'a':{'x':4}}", "Change /a/x: 2 -> 4"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 4 -> 2"},
                {"undo", "{'a':{'x':1}}", "", "Change /a/x: 2 -> 1", Saved},
            }},
        {"only where it is asked for", "{'a':{'x':1}}",
            {
                {"push /a/y 1", "{'a':{'x':1,'y':1}}", "Create /a/y: () -> 1"},
                {"push /a/x 2", "{'a':{'x':2,'y':1}}", "Change /a/x: 1 -> 2"},
                {"push /a/x 3", "{'a':{'x':3,'y':1}}", "Change /a/x: 2 -> 3"},
                /* Into the newest of the path */
                {"drag /a/x 4", "{'a':{'x':4,'y':1}}", "Change /a/x: 2 -> 4"},
                {"undo", "{'a':{'x':2,'y':1}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 4 -> 2"},
            }},
        {"exchanges with the last change", "{'a':{'x':1,'y':1,'z':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2,'y':1,'z':1}}",
                    "Change /a/x: 1 -> 2"},
                {"push /a/y 2", "{'a':{'x':2,'y':2,'z':1}}",
                    "Change /a/y: 1 -> 2"},
                {"push /a/z 2", "{'a':{'x':2,'y':2,'z':2}}",
                    "Change /a/z: 1 -> 2"},
                {"drag /a/y 3", "{'a':{'x':2,'y':3,'z':2}}",
                    "Change /a/y: 1 -> 3"},
                {"undo", "{'a':{'x':2,'y':1,'z':2}}", "Change /a/z: 1 -> 2",
                    "Change /a/y: 3 -> 1"},
                {"undo", "{'a':{'x':2,'y':1,'z':1}}", "Change /a/x: 1 -> 2",
                    "Change /a/z: 2 -> 1"},
            }},
        {"keeps what can be redone", "{'a':{'x':1,'y':1}}",
            {
                {"push /a/y 2", "{'a':{'x':1,'y':2}}", "Change /a/y: 1 -> 2"},
                {"push /a/x 2", "{'a':{'x':2,'y':2}}", "Change /a/x: 1 -> 2"},
                {"push /a/y 3", "{'a':{'x':2,'y':3}}", "Change /a/y: 2 -> 3"},
                {"undo", "{'a':{'x':2,'y':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/y: 3 -> 2"},
                {"drag /a/x 4", "{'a':{'x':4,'y':2}}", "Change /a/x: 1 -> 4"},
                {"redo", "{'a':{'x':4,'y':3}}", "Change /a/y: 2 -> 3"},
            }},
        {"a new change can be forced", "{'a':{'x':1}}",
            {
                {"push /a/y 1", "{'a':{'x':1,'y':1}}", "Create /a/y: () -> 1"},
                {"drag /a/x 2", "{'a':{'x':2,'y':1}}", "Change /a/x: 1 -> 2"},
                {"forceNew", "{'a':{'x':2,'y':1}}", "Change /a/x: 1 -> 2", ""},
                {"drag /a/x 3", "{'a':{'x':3,'y':1}}", "Change /a/x: 2 -> 3"},
                {"drag /a/x 4", "{'a':{'x':4,'y':1}}", "Change /a/x: 2 -> 4"},
                /* Any push uses it up */
                {"forceNew", "{'a':{'x':4,'y':1}}", "Change /a/x: 2 -> 4", ""},
                {"push /a/y 2", "{'a':{'x':4,'y':2}}", "Change /a/y: 1 -> 2"},
                {"drag /a/x 5", "{'a':{'x':5,'y':2}}", "Change /a/x: 2 -> 5"},
            }},
        {"not across a step", "{'a':{'x':1}}",
            {
                {"push /a/y 1", "{'a':{'x':1,'y':1}}", "Create /a/y: () -> 1"},
                {"drag /a/x 2", "{'a':{'x':2,'y':1}}", "Change /a/x: 1 -> 2"},
                {"beginGroup", "{'a':{'x':2,'y':1}}", "Change /a/x: 1 -> 2",
                    ""},
                {"drag /a/x 3", "{'a':{'x':3,'y':1}}", "Change /a/x: 2 -> 3",
                    ""},
                {"drag /a/x 4", "{'a':{'x':4,'y':1}}", "Change /a/x: 2 -> 4",
                    ""},
                {"commit", "{'a':{'x':4,'y':1}}", "Change /a/x: 2 -> 4"},
                {"drag /a/y 2", "{'a':{'x':4,'y':2}}", "Change /a/y: 1 -> 2"},
                {"drag /a/x 5", "{'a':{'x':5,'y':2}}", "Change /a/x: 4 -> 5"},
            }},
        {"creations and removals", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"drag /a/y 1", "{'a':{'x':2,'y':1}}", "Create /a/y: () -> 1"},
                {"drag /a/y 2", "{'a':{'x':2,'y':2}}", "Create /a/y: () -> 2"},
                {"dragRemove /a/x", "{'a':{'y':2}}", "Remove /a/x: 2 -> ()"},
                {"drag /a/x 5", "{'a':{'y':2,'x':5}}", "Change /a/x: 2 -> 5"},
                {"dragRemove /a/y", "{'a':{'x':5}}", "Create /a/y: () -> ()"},
                {"undo", "{'a':{'x':5}}", "Change /a/x: 2 -> 5",
                    "Create /a/y: () -> ()"},
            }},
        {"numbers in place", "{'a':{'x':[1,2.5],'y':1}}",
            {
                {"push /a/y 2", "{'a':{'x':[1,2.5],'y':2}}",
                    "Change /a/y: 1 -> 2"},
                {"drag /a/x [2,3]", "{'a':{'x':[2,3],'y':2}}",
                    "Change /a/x: [1,2.5] -> [2,3]"},
                {"drag /a/x [4,5.5]", "{'a':{'x':[4,5.5],'y':2}}",
                    "Change /a/x: [1,2.5] -> [4,5.5]"},
                {"drag /a/x [6]", "{'a':{'x':[6],'y':2}}",
                    "Change /a/x: [1,2.5] -> [6]"},
                {"undo", "{'a':{'x':[1,2.5],'y':2}}", "Change /a/y: 1 -> 2",
                    "Change /a/x: [6] -> [1,2.5]"},
            }},
    });
}

TEST(ChangeManagerTest, groups) {
    check({
        {"one step, told on commit", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"beginGroup", "{'a':{'x':2}}", "Change /a/x: 1 -> 2", ""},
                {"push /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3", ""},
                {"push /a/y 1", "{'a':{'x':3,'y':1}}", "Create /a/y: () -> 1",
                    ""},
                {"remove /a/x", "{'a':{'y':1}}", "Remove /a/x: 3 -> ()", ""},
                {"commit", "{'a':{'y':1}}", "Remove /a/x: 3 -> ()",
                    "Change /a/x: 2 -> 3; Create /a/y: () -> 1; "
                    "Remove /a/x: 3 -> ()"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Create /a/x: () -> 3; Remove /a/y: 1 -> (); "
                    "Change /a/x: 3 -> 2"},
                {"redo", "{'a':{'y':1}}", "Remove /a/x: 3 -> ()",
                    "Change /a/x: 2 -> 3; Create /a/y: () -> 1; "
                    "Remove /a/x: 3 -> ()"},
            }},
        {"empty", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"beginGroup", "{'a':{'x':2}}", "Change /a/x: 1 -> 2", ""},
                {"commit", "{'a':{'x':2}}", "Change /a/x: 1 -> 2", ""},
                {"undo", "{'a':{'x':1}}", "", "Change /a/x: 2 -> 1", Saved},
            }},
        {"commit without one tells again", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"push /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
                {"commit", "{'a':{'x':3}}", "Change /a/x: 2 -> 3",
                    "Change /a/x: 1 -> 2; Change /a/x: 2 -> 3"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 3 -> 2"},
                {"commit", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
            }},
        {"begun within another", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"beginGroup", "{'a':{'x':2}}", "Change /a/x: 1 -> 2", ""},
                {"push /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3", ""},
                {"beginGroup", "{'a':{'x':3}}", "Change /a/x: 2 -> 3", ""},
                {"push /a/x 4", "{'a':{'x':4}}", "Change /a/x: 3 -> 4", ""},
                {"commit", "{'a':{'x':4}}", "Change /a/x: 3 -> 4"},
                {"undo", "{'a':{'x':3}}", "Change /a/x: 2 -> 3",
                    "Change /a/x: 4 -> 3"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 3 -> 2"},
                {"redo", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
            }},
    });
}

TEST(ChangeManagerTest, saveMark) {
    check({
        {"undo and redo", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"markSave", "{'a':{'x':2}}", "Change /a/x: 1 -> 2", "", Saved},
                {"push /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 3 -> 2", Saved},
                {"redo", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 3 -> 2", Saved},
                {"undo", "{'a':{'x':1}}", "", "Change /a/x: 2 -> 1"},
            }},
        {"the saved state was dropped", "{'a':{'x':1}}",
            {
                {"push /a/x 2", "{'a':{'x':2}}", "Change /a/x: 1 -> 2"},
                {"push /a/x 3", "{'a':{'x':3}}", "Change /a/x: 2 -> 3"},
                {"push /a/x 4", "{'a':{'x':4}}", "Change /a/x: 3 -> 4"},
                {"markSave", "{'a':{'x':4}}", "Change /a/x: 3 -> 4", "", Saved},
                {"undo", "{'a':{'x':3}}", "Change /a/x: 2 -> 3",
                    "Change /a/x: 4 -> 3"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 3 -> 2"},
                {"push /a/x 5", "{'a':{'x':5}}", "Change /a/x: 2 -> 5"},
                {"push /a/x 6", "{'a':{'x':6}}", "Change /a/x: 5 -> 6"},
                {"undo", "{'a':{'x':5}}", "Change /a/x: 2 -> 5",
                    "Change /a/x: 6 -> 5"},
                {"undo", "{'a':{'x':2}}", "Change /a/x: 1 -> 2",
                    "Change /a/x: 5 -> 2"},
                {"undo", "{'a':{'x':1}}", "", "Change /a/x: 2 -> 1", Saved},
            }},
        {"a merge doesn't touch it", "{'a':{'x':1,'y':1}}",
            {
                {"push /a/y 2", "{'a':{'x':1,'y':2}}", "Change /a/y: 1 -> 2"},
                {"drag /a/x 2", "{'a':{'x':2,'y':2}}", "Change /a/x: 1 -> 2"},
                {"markSave", "{'a':{'x':2,'y':2}}", "Change /a/x: 1 -> 2", "",
                    Saved},
                {"drag /a/x 3", "{'a':{'x':3,'y':2}}", "Change /a/x: 1 -> 3",
                    "*", Saved},
                {"forceNew", "{'a':{'x':3,'y':2}}", "Change /a/x: 1 -> 3", "",
                    Saved},
                {"drag /a/x 4", "{'a':{'x':4,'y':2}}", "Change /a/x: 3 -> 4"},
            }},
    });
}

TEST(ChangeManagerTest, append) {
    check({
        {"to an array", "{'list':['x']}",
            {
                {"append /list 'y'", "{'list':['x','y']}",
                    "Change /list: ['x'] -> ['x','y']"},
                {"append /list 'z'", "{'list':['x','y','z']}",
                    "Change /list: ['x','y'] -> ['x','y','z']"},
                {"undo", "{'list':['x','y']}",
                    "Change /list: ['x'] -> ['x','y']",
                    "Change /list: ['x','y','z'] -> ['x','y']"},
            }},
        {"to what isn't one", "{'a':{'x':1}}",
            {
                {"append /a/x 'y'", "{'a':{'x':['y']}}",
                    "Change /a/x: 1 -> ['y']"},
                {"append /list 'y'", "{'a':{'x':['y']},'list':['y']}",
                    "Create /list: () -> ['y']"},
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
        fixture.manager.pushChange(
            "/a/text", Containers::StringView{text.data(), 4}, false);
    }
    fixture.manager.pushChange("/a/none", Containers::StringView{}, false);
    EXPECT_EQ(fixture.document(), R"({"a":{"text":"text","none":""}})");

    fixture.manager.pushChange(
        "/a/vector", Magnum::Math::Vector3<float>{1.0f, -2.0f, 0.1f}, false);
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

    fixture.manager.pushTransformChange(
        "/a", Matrix4::translation({1, 2, 3}), true);
    EXPECT_EQ(fixture.told,
        "Create /a/translation: () -> [1.0,2.0,3.0]; "
        "Create /a/rotation: () -> [0.0,0.0,0.0,1.0]; "
        "Create /a/scaling: () -> [1.0,1.0,1.0]");

    /* Merges, which turns the order around */
    fixture.manager.pushTransformChange(
        "/a", Matrix4::translation({4, 5, 6}), true);
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
    fixture.manager.pushChange("/a/x/y/0", *fixture.project.find("/a/x"), true);
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
    fixture.project.find("/a/z")->PushBack(2, allocator);
    EXPECT_EQ(
        printed(fixture.manager.lastChange()), R"(Change /a/z: "z" -> [1])");

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
        manager.addChangeHandler(
            view("n" + std::to_string(i)), Told::handle, &many[i]);
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
    manager.addChangeHandler(
        "a",
        [](const Change&, Containers::ArrayView<Containers::StringView>,
            void* userData) {
            Registering& self = *static_cast<Registering*>(userData);
            if(self.done)
                return;
            self.done = true;
            /* Enough to have the lists of handlers move */
            for(int i = 0; i != 20; ++i)
                self.changeManager.addChangeHandler(
                    view("n" + std::to_string(i)), Told::handle, &self.told);
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
        manager.addChangeHandler(
            "a",
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

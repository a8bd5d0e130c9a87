#ifndef Orrelin_test_ChangeOperation_h
#define Orrelin_test_ChangeOperation_h

#include <sstream>
#include <string>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "ChangeManager.h"
#include "JsonText.h"

namespace OrrelinEngine {

inline Containers::StringView view(const std::string& string) {
    return {string.data(), string.size()};
}

inline std::string printed(const Change& change) {
    std::ostringstream out;
    Utility::Debug{&out, Utility::Debug::Flag::NoNewlineAtTheEnd} << change;
    return out.str();
}

/* One call of the change manager. As text it's the name of the call, the path
   and the value as JSON, such as `push /a/b [1]`. To drag is to push
   continuously. */
struct ChangeOperation {
    explicit ChangeOperation(
        std::string n, std::string p = {}, std::string v = {}):
        name{std::move(n)},
        path{std::move(p)}, value{std::move(v)} {}

    explicit ChangeOperation(const char* text) {
        std::istringstream in{text};
        std::getline(in, name, ' ');
        std::getline(in, path, ' ');
        std::getline(in, value);
    }

    std::string text() const {
        return name + (path.empty() && value.empty() ? "" : ' ' + path) +
            (value.empty() ? "" : ' ' + value);
    }

    template<class Manager> void perform(Manager& manager) const {
        /* Gone before the next one: the manager has to copy it all */
        const std::string pathCopy = path;
        const Containers::StringView where = view(pathCopy);
        const JsonDocument what = jsonDocument(value);
        if(name == "push")
            manager.pushChange(where, what, false);
        else if(name == "drag")
            manager.pushChange(where, what, true);
        else if(name == "remove")
            manager.pushRemoval(where);
        else if(name == "dragRemove")
            manager.pushChange(Containers::String{where}, nullptr, true);
        else if(name == "append")
            manager.pushAppend(where, what.GetString());
        else if(name == "beginGroup")
            manager.beginGroup();
        else if(name == "commit")
            manager.commit();
        else if(name == "undo")
            manager.undoLast();
        else if(name == "redo")
            manager.redoLastUndo();
        else if(name == "markSave")
            manager.markSave();
        else if(name == "forceNew")
            manager.forceNewContinuousChange();
        else
            ADD_FAILURE() << "unknown operation " << text();
    }

    std::string name;
    std::string path;
    std::string value;
};

}

#endif

#ifndef Orrelin_test_ChangeManagerReference_h
#define Orrelin_test_ChangeManagerReference_h

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>
#include <Corrade/Containers/StringStl.h>
#include <rapidjson/pointer.h>

#include "JsonText.h"

namespace OrrelinEngine {

/* The path up to its last slash and what follows it */
inline std::pair<std::string, std::string> splitLast(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if(slash == std::string::npos)
        return {};
    return {path.substr(0, slash), path.substr(slash + 1)};
}

inline std::vector<std::string> split(const std::string& path) {
    std::vector<std::string> out(1);
    for(const char c: path) {
        if(c == '/')
            out.emplace_back();
        else
            out.back() += c;
    }
    return out;
}

/* Whether a value created there has to go into an array */
inline bool isIndex(const std::string& segment) {
    const std::string digits =
        segment.substr(segment.rfind('-', 0) == 0 ? 1 : 0);
    return !digits.empty() &&
        digits.find_first_not_of("0123456789") == std::string::npos;
}

/* What the change manager does, told in the plainest way: values are texts and
   RapidJSON's own pointers search from end to end. The operations have the
   change manager's names. */
class ChangeManagerReference {
public:
    struct Change {
        std::string path;
        /* JSON, empty if there is none */
        std::string oldValue, newValue;
        int group = -1;

        std::string text() const {
            const char* const kind = oldValue.empty() ? "Create "
                : newValue.empty()                    ? "Remove "
                                                      : "Change ";
            return kind + path + ": " + (oldValue.empty() ? "()" : oldValue) +
                " -> " + (newValue.empty() ? "()" : newValue);
        }
    };

    JsonDocument document{rapidjson::kObjectType};
    std::vector<Change> history;
    int last = -1;
    int saved = -1;
    int group = -1;
    /* Segment and name */
    std::vector<std::pair<std::string, std::string>> handlers;
    std::vector<std::string> notifications;
    /* Something was asked for that is a programming error */
    bool violated = false;

    JsonValue* find(const std::string& path) {
        return Pointer{path.data(), path.size()}.Get(document);
    }

    JsonValue& create(const std::string& path) {
        return Pointer{path.data(), path.size()}.Create(document);
    }

    void pushChange(
        Containers::StringView path, const JsonValue& value, bool continuous) {
        push(path, jsonText(value), continuous);
    }

    void pushChange(
        const Containers::String& path, std::nullptr_t, bool continuous) {
        push(path, {}, continuous);
    }

    void pushRemoval(Containers::StringView path) { push(path, {}, false); }

    void pushAppend(
        Containers::StringView path, Containers::StringView string) {
        JsonDocument array;
        const JsonValue* const current = find({path.data(), path.size()});
        if(current && current->IsArray())
            array.CopyFrom(*current, array.GetAllocator());
        else
            array.SetArray();
        array.PushBack(
            JsonValue{string.data(), rapidjson::SizeType(string.size())},
            array.GetAllocator());
        push(path, jsonText(array), false);
    }

    void beginGroup() { group = ++_groups; }

    void commit() {
        const int g = std::exchange(group, -1);
        int first = last + 1;
        while(first > 0 && change(first - 1).group == g)
            --first;
        for(; first <= last; ++first)
            notify(change(first));
    }

    void undoLast() {
        violated |= group != -1;
        if(last == -1 || violated)
            return;
        const int g = change(last).group;
        do {
            Change reversed = change(last);
            std::swap(reversed.oldValue, reversed.newValue);
            apply(reversed);
            --last;
        } while(last != -1 && g != -1 && change(last).group == g);
    }

    void redoLastUndo() {
        violated |= group != -1;
        const int size = int(history.size());
        if(last + 1 == size || violated)
            return;
        const int g = change(last + 1).group;
        do
            apply(change(++last));
        while(last + 1 != size && g != -1 && change(last + 1).group == g);
    }

    void reset() {
        history.clear();
        last = -1;
        handlers.clear();
        _names.clear();
    }

    void markSave() { saved = last; }
    void forceNewContinuousChange() { _forceNew = true; }
    bool hasUnsavedChanges() const { return saved != last; }

private:
    typedef rapidjson::GenericPointer<JsonValue> Pointer;

    Change& change(int i) { return history[std::size_t(i)]; }

    bool isInArray(const std::string& path) {
        const JsonValue* const parent = find(splitLast(path).first);
        return parent && !path.empty() && parent->IsArray();
    }

    void set(const std::string& path, const std::string& at,
        const std::string& value) {
        createNull(path, at).CopyFrom(
            jsonDocument(value), document.GetAllocator());
    }

    void push(
        const std::string& path, const std::string& value, bool continuous) {
        const int candidate = continuous ? mergeCandidate(path) : -1;
        _forceNew = false;
        if(candidate != -1) {
            std::swap(change(candidate), change(last));
            change(last).newValue = value;
        } else {
            history.resize(std::size_t(++last));
            if(saved == last)
                saved = -1;
            const JsonValue* const old = find(path);
            history.push_back({!value.empty() && !old ? placeOf(path) : path,
                old ? jsonText(*old) : "", value, group});
        }

        const Change& made = change(last);
        if(candidate != -1 && !value.empty() && isInArray(made.path) &&
            find(made.path))
            set(made.path, made.path, value);
        else
            perform(made, made.path);
        notify(made);
    }

    int mergeCandidate(const std::string& path) {
        for(int i = last; i >= 1 && change(i).group == group; --i) {
            if(change(i).path != path)
                continue;
            const bool removedElement = isInArray(path) &&
                change(i).newValue.empty() &&
                (!change(i).oldValue.empty() || find(path));
            return _forceNew || removedElement ? -1 : i;
        }
        return -1;
    }

    /* Where an index inserts in an array, -1 if that's nowhere in any */
    static long long indexOf(const std::string& segment) {
        const long long n = std::strtoll(segment.data(), nullptr, 10);
        return n < 0 || n > 0x7fffffff ? -1 : n;
    }

    static std::size_t insertionIndex(
        const std::string& segment, std::size_t size) {
        const long long n = indexOf(segment);
        return n == -1 ? size : std::size_t(n);
    }

    /* The path of a value that isn't there yet, with the index that it will
       have */
    std::string placeOf(const std::string& path) {
        std::string written, out;
        const std::vector<std::string> segments = split(path);
        for(std::size_t i = 1; i != segments.size(); ++i) {
            const JsonValue* const parent = find(written);
            const bool appends =
                segments[i] == "-" && parent && parent->IsArray();
            written += '/' + segments[i];
            out += '/';
            out += appends ? std::to_string(parent->Size()) : segments[i];
        }

        const auto [parentPath, segment] = splitLast(out);
        const JsonValue* const parent = find(parentPath);
        if(!isIndex(segment) || (parent && !parent->IsArray()) ||
            (!parent && indexOf(segment) != -1))
            return out;
        return parentPath + '/' +
            std::to_string(
                insertionIndex(segment, parent ? parent->Size() : 0));
    }

    void apply(const Change& change) {
        const bool isNothing =
            change.oldValue.empty() && change.newValue.empty();
        perform(change, isNothing ? change.path : addressOf(change.path));
        notify(change);
    }

    /* What is at the path is done at the other one, where that leads */
    void perform(const Change& change, const std::string& at) {
        if(change.newValue.empty())
            remove(change.path, at);
        else if(!change.oldValue.empty() && (find(at) || !isInArray(at)))
            set(change.path, at, change.newValue);
        else
            insert(change.path, at, change.newValue);
    }

    /* An index as a pointer has it */
    static bool isPlain(const std::string& segment) {
        return isIndex(segment) &&
            segment == std::to_string(std::max(indexOf(segment), 0ll));
    }

    std::string addressOf(const std::string& path) {
        std::string recorded, at;
        const std::vector<std::string> segments = split(path);
        for(std::size_t i = 1; i != segments.size(); ++i) {
            const JsonValue* const parent = find(at);
            recorded += '/' + segments[i];
            at += '/' + segments[i];
            const auto name = _names.find(recorded);
            if(!find(at) && parent && parent->IsArray() &&
                name != _names.end() && name->second < parent->Size())
                at = splitLast(at).first + '/' + std::to_string(name->second);
        }
        return at;
    }

    /* The names of the array's elements from the index on, one by one */
    template<class Function> void forNames(
        const std::string& array, std::size_t index, Function&& function) {
        for(auto i = _names.begin(); i != _names.end();) {
            const auto name = i++;
            if(splitLast(name->first).first == array && name->second >= index)
                function(name);
        }
    }

    void erase(const std::string& path, const std::string& at) {
        const JsonValue* const parent = find(splitLast(at).first);
        const auto own = _names.find(path);
        if(find(at) && parent && parent->IsArray()) {
            const std::size_t index = std::stoul(splitLast(at).second);
            if(index + 1 == parent->Size() && own != _names.end() &&
                own->second == index)
                _names.erase(own);
            else
                forNames(splitLast(path).first, index, [&](auto name) {
                    if(name->second-- == index)
                        _names.erase(name);
                });
        }
        Pointer{at.data(), at.size()}.Erase(document);
    }

    void remove(std::string path, std::string at) {
        const JsonValue* container;
        do {
            erase(path, at);
            path = splitLast(path).first;
            at = splitLast(at).first;
            container = find(at);
            /* Top-level members stay */
        } while(!splitLast(at).first.empty() && container &&
            ((container->IsArray() && container->Empty()) ||
                (container->IsObject() && container->ObjectEmpty())));
    }

    /* The elements that this makes, and the array that it makes an object */
    JsonValue& createNull(const std::string& path, const std::string& at) {
        std::string recorded, there;
        const std::vector<std::string> segments = split(at);
        for(std::size_t i = 1; i != segments.size(); ++i) {
            const JsonValue* const parent = find(there);
            const std::string array = recorded;
            recorded += '/' + split(path)[i];
            there += '/' + segments[i];
            if(find(there) || !parent)
                continue;
            if(parent->IsArray() && segments[i] == "-")
                _names[recorded] = parent->Size();
            else if(parent->IsArray() && !isPlain(segments[i]))
                forNames(array, 0, [&](auto name) { _names.erase(name); });
            break;
        }
        return create(at);
    }

    void insert(const std::string& path, const std::string& at,
        const std::string& value) {
        const auto [parentPath, segment] = splitLast(at);
        JsonValue* parent = find(parentPath);
        if(!isIndex(segment) || (parent && parent->IsObject()) ||
            (!parent && indexOf(segment) != -1)) {
            set(path, at, value);
            return;
        }
        if(!parent)
            parent = &createNull(splitLast(path).first, parentPath).SetArray();
        if(!parent->IsArray()) {
            violated = true;
            return;
        }
        const std::size_t index = insertionIndex(segment, parent->Size());
        if(index < parent->Size())
            forNames(splitLast(path).first, index,
                [](auto name) { ++name->second; });
        if(!isPlain(segment))
            _names[path] = index;
        while(parent->Size() < index)
            parent->PushBack(JsonValue{}, document.GetAllocator());
        parent->PushBack(JsonValue{}, document.GetAllocator());
        for(auto i = parent->End() - 1; i != parent->Begin() + index; --i)
            i->Swap(*(i - 1));
        (*parent)[rapidjson::SizeType(index)].CopyFrom(
            jsonDocument(value), document.GetAllocator());
    }

    void notify(const Change& change) {
        if(group != -1)
            return;
        for(const std::string& segment: split(change.path))
            for(const auto& [key, name]: handlers)
                if(key == segment)
                    notifications.push_back(name + " " + change.text());
    }

    int _groups = 0;
    bool _forceNew = false;
    /* Elements whose paths aren't pointers to them: where they are */
    std::map<std::string, std::size_t> _names;
};

}

#endif

#ifndef Orrelin_test_ChangeManagerReference_h
#define Orrelin_test_ChangeManagerReference_h

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>
#include <Corrade/Containers/StringStl.h>
#include <rapidjson/pointer.h>

#include "JsonText.h"

namespace OrrelinEngine { namespace Test {

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

    void set(const std::string& path, const std::string& value) {
        create(path).CopyFrom(jsonDocument(value), document.GetAllocator());
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
            find(made.path)) {
            set(made.path, value);
            notify(made);
        } else
            apply(made);
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
        const std::string path = addressOf(change);
        if(change.newValue.empty())
            remove(path);
        else if(!change.oldValue.empty() && (find(path) || !isInArray(path)))
            set(path, change.newValue);
        else
            insert(path, change.newValue);
        notify(change);
    }

    /* Where the old value is. It went into an array if the object that it was
       in, as a member named like an index, is an array by now. */
    std::string addressOf(const Change& change) {
        std::string found;
        if(!change.oldValue.empty() && !find(change.path))
            found = search(
                {}, split(change.path), 1, jsonDocument(change.oldValue));
        return found.empty() ? change.path : found;
    }

    /* Empty if there is none */
    std::string search(const std::string& at,
        const std::vector<std::string>& segments, std::size_t i,
        const JsonValue& wanted) {
        const JsonValue* const value = find(at);
        if(!value || i == segments.size())
            return value && *value == wanted ? at : std::string{};
        const std::string& segment = segments[i];
        const std::string child = at + '/' + segment;
        /* An index as pointers write it means this element and no other */
        if(find(child) || !value->IsArray() ||
            (segment != "-" && !isIndex(segment)) ||
            segment == std::to_string(std::max(indexOf(segment), 0ll)))
            return search(child, segments, i + 1, wanted);

        std::string found;
        for(std::size_t j = value->Size(); j && found.empty(); --j)
            found = search(
                at + '/' + std::to_string(j - 1), segments, i + 1, wanted);
        return found;
    }

    void remove(const std::string& path) {
        const JsonValue* container;
        std::string at = path;
        do {
            Pointer{at.data(), at.size()}.Erase(document);
            at = splitLast(at).first;
            container = find(at);
            /* Top-level members stay */
        } while(!splitLast(at).first.empty() && container &&
            ((container->IsArray() && container->Empty()) ||
                (container->IsObject() && container->ObjectEmpty())));
    }

    void insert(const std::string& path, const std::string& value) {
        const auto [parentPath, segment] = splitLast(path);
        JsonValue* parent = find(parentPath);
        if(!isIndex(segment) || (parent && parent->IsObject()) ||
            (!parent && indexOf(segment) != -1)) {
            set(path, value);
            return;
        }
        if(!parent)
            parent = &create(parentPath).SetArray();
        if(!parent->IsArray()) {
            violated = true;
            return;
        }
        const std::size_t index = insertionIndex(segment, parent->Size());
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
};

}}

#endif

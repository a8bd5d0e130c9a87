#ifndef Orrelin_test_ChangeManagerReference_h
#define Orrelin_test_ChangeManagerReference_h

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "JsonText.h"

namespace OrrelinEngine { namespace Test {

/* A JSON value that is copied and compared as a whole */
struct Tree {
    enum class Type { Scalar, Array, Object };

    explicit Tree() = default;
    explicit Tree(Type t): type{t} {}
    explicit Tree(const JsonValue& value) {
        if(value.IsObject()) {
            type = Type::Object;
            for(const auto& member: value.GetObject()) {
                names.emplace_back(
                    member.name.GetString(), member.name.GetStringLength());
                children.emplace_back(member.value);
            }
        } else if(value.IsArray()) {
            type = Type::Array;
            for(const JsonValue& element: value.GetArray())
                children.emplace_back(element);
        } else
            scalar = jsonText(value);
    }

    /* Position of a member, the number of members if there is none */
    std::size_t member(const std::string& name) const {
        std::size_t i = 0;
        while(i != names.size() && names[i] != name)
            ++i;
        return i;
    }

    std::string text() const {
        if(type == Type::Scalar)
            return scalar;
        std::string out;
        for(std::size_t i = 0; i != children.size(); ++i) {
            out += i ? "," : "";
            if(type == Type::Object)
                out += '"' + names[i] + "\":";
            out += children[i].text();
        }
        return type == Type::Object ? '{' + out + '}' : '[' + out + ']';
    }

    Type type = Type::Scalar;
    /* JSON text */
    std::string scalar = "null";
    std::vector<Tree> children;
    /* Of the children of an object; none that needs escaping in JSON */
    std::vector<std::string> names;
};

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

/* The path up to its last slash and what follows it */
inline std::pair<std::string, std::string> splitLast(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if(slash == std::string::npos)
        return {};
    return {path.substr(0, slash), path.substr(slash + 1)};
}

/* Whether a value created there has to go into an array */
inline bool isIndex(const std::string& segment) {
    const std::string digits =
        segment.substr(segment.rfind('-', 0) == 0 ? 1 : 0);
    return !digits.empty() &&
        digits.find_first_not_of("0123456789") == std::string::npos;
}

/* A name, which may be an index */
struct Token {
    explicit Token(const std::string& segment) {
        for(std::size_t i = 0; i != segment.size(); ++i) {
            if(segment[i] == '~')
                name += segment[++i] == '0' ? '~' : '/';
            else
                name += segment[i];
        }
        const bool digits = !name.empty() && name.size() <= 9 &&
            name.find_first_not_of("0123456789") == std::string::npos;
        if(digits && (name == "0" || name[0] != '0'))
            index = std::stoul(name);
    }

    std::string name;
    std::optional<std::size_t> index;
};

inline std::vector<Token> tokens(const std::string& pointer) {
    std::vector<Token> out;
    for(const std::string& segment: split(pointer))
        out.emplace_back(segment);
    out.erase(out.begin());
    return out;
}

inline Tree* child(Tree& parent, const Token& token) {
    std::size_t i = parent.children.size();
    if(parent.type == Tree::Type::Object)
        i = parent.member(token.name);
    else if(parent.type == Tree::Type::Array && token.index)
        i = *token.index;
    return i < parent.children.size() ? &parent.children[i] : nullptr;
}

inline Tree* find(Tree& root, const std::string& pointer) {
    Tree* value = &root;
    for(const Token& token: tokens(pointer))
        if(!(value = child(*value, token)))
            break;
    return value;
}

inline Tree& create(Tree& root, const std::string& pointer) {
    Tree* value = &root;
    for(const Token& token: tokens(pointer)) {
        if(value->type == Tree::Type::Array && token.name == "-") {
            value->children.emplace_back();
            value = &value->children.back();
            continue;
        }
        if(!token.index && value->type != Tree::Type::Object)
            *value = Tree{Tree::Type::Object};
        else if(value->type == Tree::Type::Scalar)
            *value = Tree{Tree::Type::Array};

        if(!child(*value, token)) {
            if(value->type == Tree::Type::Object) {
                value->names.push_back(token.name);
                value->children.emplace_back();
            } else
                value->children.resize(*token.index + 1);
        }
        value = child(*value, token);
    }
    return *value;
}

inline void erase(Tree& root, const std::string& pointer) {
    Tree* const value = find(root, pointer);
    if(!value || value == &root)
        return;
    Tree& parent = *find(root, splitLast(pointer).first);
    const auto i = value - parent.children.data();
    parent.children.erase(parent.children.begin() + i);
    if(parent.type == Tree::Type::Object)
        parent.names.erase(parent.names.begin() + i);
}

/* What the change manager does, told in the plainest way: everything is
   copied as a whole and searched from end to end */
class ChangeManagerReference {
public:
    struct Change {
        std::string path;
        std::optional<Tree> oldValue, newValue;
        int group = -1;

        std::string text() const {
            const std::string kind =
                oldValue ? newValue ? "Change " : "Remove " : "Create ";
            return kind + path + ": " + (oldValue ? oldValue->text() : "()") +
                " -> " + (newValue ? newValue->text() : "()");
        }
    };

    Tree document{Tree::Type::Object};
    std::vector<Change> history;
    int last = -1;
    int saved = -1;
    int group = -1;
    /* Segment and name */
    std::vector<std::pair<std::string, std::string>> handlers;
    std::vector<std::string> notifications;
    /* Something was asked for that is a programming error */
    bool violated = false;

    void push(const std::string& path, const std::optional<Tree>& value,
        bool continuous) {
        const int candidate = continuous ? mergeCandidate(path) : -1;
        _forceNew = false;
        if(candidate != -1) {
            std::swap(
                history[std::size_t(candidate)], history[std::size_t(last)]);
            history[std::size_t(last)].newValue = value;
        } else {
            ++last;
            history.resize(std::size_t(last));
            if(saved == last)
                saved = -1;
            const Tree* const old = find(document, path);
            history.push_back({value && !old ? placeOf(path) : path,
                old ? std::optional<Tree>{*old} : std::nullopt, value, group});
        }

        const Change change = history[std::size_t(last)];
        if(candidate != -1 && value && isElement(change.path)) {
            *find(document, change.path) = *value;
            notify(change);
        } else
            apply(change);
    }

    void append(const std::string& path, const Tree& value) {
        const Tree* const current = find(document, path);
        Tree array = current && current->type == Tree::Type::Array
            ? *current
            : Tree{Tree::Type::Array};
        array.children.push_back(value);
        push(path, array, false);
    }

    void beginGroup() { group = ++_groups; }

    void commit() {
        const int g = std::exchange(group, -1);
        int first = last + 1;
        while(first > 0 && history[std::size_t(first - 1)].group == g)
            --first;
        for(; first <= last; ++first)
            notify(history[std::size_t(first)]);
    }

    void undo() {
        violated |= group != -1;
        if(last == -1 || violated)
            return;
        const int g = history[std::size_t(last)].group;
        do {
            Change change = history[std::size_t(last)];
            std::swap(change.oldValue, change.newValue);
            apply(change);
            --last;
        } while(last != -1 && g != -1 && history[std::size_t(last)].group == g);
    }

    void redo() {
        violated |= group != -1;
        const int size = int(history.size());
        if(last + 1 == size || violated)
            return;
        const int g = history[std::size_t(last + 1)].group;
        do {
            ++last;
            apply(history[std::size_t(last)]);
        } while(last + 1 != size && g != -1 &&
            history[std::size_t(last + 1)].group == g);
    }

    void reset() {
        history.clear();
        last = -1;
        handlers.clear();
    }

    void markSave() { saved = last; }
    void forceNew() { _forceNew = true; }
    bool hasUnsavedChanges() const { return saved != last; }

private:
    int mergeCandidate(const std::string& path) {
        for(int i = last; i >= 1; --i) {
            const Change& change = history[std::size_t(i)];
            if(change.group != group)
                return -1;
            if(change.path != path)
                continue;
            const Tree* const parent = find(document, splitLast(path).first);
            const bool inArray =
                parent && !path.empty() && parent->type == Tree::Type::Array;
            const bool removedElement = inArray && !change.newValue &&
                (change.oldValue || find(document, path));
            return _forceNew || removedElement ? -1 : i;
        }
        return -1;
    }

    bool isElement(const std::string& path) {
        const Tree* const parent = find(document, splitLast(path).first);
        return parent && parent->type == Tree::Type::Array && !path.empty() &&
            find(document, path);
    }

    /* Where an index, as long as it may be, inserts in an array */
    static std::size_t insertionIndex(
        const std::string& segment, std::size_t size) {
        std::string digits = segment;
        const bool minus = digits[0] == '-';
        digits.erase(0, minus);
        digits.erase(0, digits.find_first_not_of('0'));
        if(digits.empty())
            return 0;
        return minus || digits.size() > 9 ? size : std::stoul(digits);
    }

    /* The path of a value that isn't there yet, with the index that it will
       have */
    std::string placeOf(const std::string& path) {
        std::string out;
        Tree* parent = &document;
        const std::vector<std::string> segments = split(path);
        for(std::size_t i = 1; i != segments.size(); ++i) {
            const bool appends = segments[i] == "-" && parent &&
                parent->type == Tree::Type::Array;
            out += '/';
            out +=
                appends ? std::to_string(parent->children.size()) : segments[i];
            parent = parent ? child(*parent, Token{segments[i]}) : nullptr;
        }

        const auto [parentPath, segment] = splitLast(out);
        parent = find(document, parentPath);
        if(!isIndex(segment) || (parent && parent->type != Tree::Type::Array))
            return out;
        return parentPath + '/' +
            std::to_string(
                insertionIndex(segment, parent ? parent->children.size() : 0));
    }

    void apply(const Change& change) {
        if(!change.newValue)
            remove(change.path);
        else if(change.oldValue)
            create(document, change.path) = *change.newValue;
        else
            insert(change.path, *change.newValue);
        notify(change);
    }

    void remove(const std::string& path) {
        erase(document, path);
        for(std::string container = splitLast(path).first;
            !container.empty();) {
            const Tree* const value = find(document, container);
            const std::string parent = splitLast(container).first;
            if(!value || value->type == Tree::Type::Scalar ||
                !value->children.empty() || parent.empty())
                return;
            erase(document, container);
            container = parent;
        }
    }

    void insert(const std::string& path, const Tree& value) {
        const auto [parentPath, segment] = splitLast(path);
        Tree* parent = find(document, parentPath);
        if(!isIndex(segment) ||
            (parent && parent->type == Tree::Type::Object)) {
            create(document, path) = value;
            return;
        }
        if(!parent) {
            parent = &create(document, parentPath);
            *parent = Tree{Tree::Type::Array};
        }
        if(parent->type != Tree::Type::Array) {
            violated = true;
            return;
        }
        std::vector<Tree>& elements = parent->children;
        const std::size_t index = insertionIndex(segment, elements.size());
        if(index > elements.size())
            elements.resize(index);
        elements.insert(elements.begin() + std::ptrdiff_t(index), value);
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

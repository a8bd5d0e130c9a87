#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include <gtest/gtest.h>
#include <rapidjson/pointer.h>

#include "Random.h"
#include "Tools/Project.h"
#include "editor/ProjectFile.h"
#include "editor/ProjectSection.h"

namespace OrrelinEngine { namespace {

using namespace Containers::Literals;

typedef rapidjson::GenericPointer<JsonValue> Pointer;

const char* const Names[]{"", "a", "b", "a/b", "~", "~1", "0", "1", "2", "01",
    "-", "-1", "99999999999", "with a space", "é"};
const char* const Segments[]{"", "a", "b", "a~1b", "~0", "~01", "0", "1", "2",
    "01", "-", "-1", "99999999999", "with a space", "é", "m3", "m59", "absent"};

JsonValue randomValue(
    Random& random, JsonAllocator& allocator, std::size_t depth) {
    const std::size_t kind = random.below(depth ? 6 : 3);
    JsonValue out;
    if(kind == 1)
        out.SetInt(int(random.below(100)));
    else if(kind == 2)
        out.SetString("text");
    else if(kind == 3) {
        out.SetArray();
        for(std::size_t i = random.below(5); i; --i)
            out.PushBack(randomValue(random, allocator, depth - 1), allocator);
    } else if(kind > 3) {
        out.SetObject();
        /* So many that they are indexed, now and then */
        if(random.below(4) == 0)
            for(int i = 0; i != 60; ++i)
                out.AddMember(
                    JsonValue{("m" + std::to_string(i)).data(), allocator},
                    JsonValue{i}, allocator);
        for(const char* name: Names)
            if(random.below(2))
                out.AddMember(JsonValue{name, allocator},
                    randomValue(random, allocator, depth - 1), allocator);
    }
    return out;
}

std::string randomPointer(Random& random) {
    if(random.below(20) == 0)
        return random.oneOf({"a", "a/b", "/a~2", "/a~", "/~/b", " /a"});
    std::string out;
    for(std::size_t i = random.below(5); i; --i)
        out += std::string{"/"} + random.oneOf(Segments);
    return out;
}

/* RapidJSON's own pointers, which search, tell what has to come out */
TEST(ProjectFileTest, agreesWithRapidJson) {
    Random random{1};
    for(int document = 0; document != 300; ++document) {
        ProjectFile file;
        static_cast<JsonValue&>(file.document) =
            randomValue(random, file.allocator(), 4);
        JsonDocument expected;
        expected.CopyFrom(file.document, expected.GetAllocator());

        for(int i = 0; i != 100; ++i) {
            const std::string path = randomPointer(random);
            const Pointer pointer{path.data(), path.size()};
            SCOPED_TRACE("document " + std::to_string(document) + ", step " +
                std::to_string(i) + ", " + path);

            ASSERT_EQ(file.find(path),
                pointer.IsValid() ? pointer.Get(file.document) : nullptr);
            const std::size_t action = random.below(3);
            if(action == 0 && pointer.IsValid()) {
                file.create(path).SetInt(i);
                pointer.Create(expected, expected.GetAllocator()).SetInt(i);
            } else if(action == 1) {
                ASSERT_EQ(file.erase(path),
                    pointer.IsValid() && pointer.Erase(expected));
            } else
                continue;
            ASSERT_EQ(jsonText(file.document), jsonText(expected));
        }
    }
}

TEST(ProjectFileTest, noUriFragments) {
    ProjectFile file;
    file.create("/a");
    EXPECT_EQ(file.find("#/a"), nullptr);
    EXPECT_FALSE(file.erase("#/a"));
}

TEST(ProjectFileTest, duplicateNames) {
    ProjectFile file;
    std::string json = R"({"twice": 1)";
    for(int i = 0; i != 100; ++i)
        json += ", \"" + std::to_string(i) + "\": 0";
    file.document.Parse((json + R"(, "twice": 2})").data());

    EXPECT_EQ(file.find("/twice"), &file.document.MemberBegin()->value);
    EXPECT_TRUE(file.erase("/twice"));
    EXPECT_EQ(file.find("/twice"), &(file.document.MemberEnd() - 1)->value);
}

TEST(ProjectFileDeathTest, createAtNoPointer) {
    for(const char* path: {"a", "/a~2", "/~", "#/a"})
        EXPECT_DEATH(ProjectFile{}.create(path),
            testing::Eq("ProjectFile::create(): " + std::string{path} +
                " is no JSON Pointer\n"));
}

/* A large object, edited in every way. All names that it ever had are looked
   up to see whether they are found where they are, and only there. */
class LargeObject {
public:
    explicit LargeObject(std::size_t size, unsigned int seed = 1):
        random{seed} {
        file.document.AddMember("objects", fresh(size), file.allocator());
    }

    JsonValue& object() { return file.document["objects"]; }

    JsonAllocator& allocator() { return file.allocator(); }

    std::string newName() {
        /* Some in the value, some too long for that */
        _names.push_back((random.below(2) ? "n" : "a-name-of-more-bytes-") +
            std::to_string(_names.size()));
        return _names.back();
    }

    JsonValue newKey() {
        const std::string name = newName();
        return JsonValue{
            name.data(), rapidjson::SizeType(name.size()), allocator()};
    }

    JsonValue fresh(std::size_t size) {
        JsonValue out{rapidjson::kObjectType};
        for(std::size_t i = 0; i != size; ++i)
            out.AddMember(newKey(), JsonValue{int(i)}, allocator());
        return out;
    }

    void add() { object().AddMember(newKey(), JsonValue{}, allocator()); }

    JsonValue::MemberIterator randomMember() {
        return object().MemberBegin() +
            std::ptrdiff_t(random.below(object().MemberCount()));
    }

    std::string randomPath() {
        return std::string{"/objects/"} + randomMember()->name.GetString();
    }

    void check(const std::string& name) {
        const auto found = object().FindMember(name.data());
        JsonValue* const expected =
            found == object().MemberEnd() ? nullptr : &found->value;
        ASSERT_EQ(file.find("/objects/" + name), expected) << name;
        ASSERT_EQ(file["objects"][name].readValueNoDefault(), expected) << name;
    }

    void checkSome() {
        if(object().MemberCount()) {
            check(object().MemberBegin()->name.GetString());
            check((object().MemberEnd() - 1)->name.GetString());
        }
        for(int i = 0; i != 8; ++i) {
            check(_names[random.below(_names.size())]);
            if(object().MemberCount())
                check(randomMember()->name.GetString());
        }
    }

    void checkAll() {
        /* Or every so many, where an edit renamed all again and again */
        for(std::size_t i = 0; i < _names.size(); i += 1 + _names.size() / 1000)
            check(_names[i]);
        for(auto& member: object().GetObject())
            check(member.name.GetString());
    }

    ProjectFile file;
    Random random;

private:
    std::vector<std::string> _names;
};

void swapMembers(JsonValue::Member& a, JsonValue::Member& b) {
    a.name.Swap(b.name);
    a.value.Swap(b.value);
}

void sortMembers(JsonValue& object) {
    std::vector<std::pair<JsonValue, JsonValue>> members;
    for(auto& member: object.GetObject())
        members.emplace_back(std::move(member.name), std::move(member.value));
    std::sort(members.begin(), members.end(), [](auto& a, auto& b) {
        return std::string{a.first.GetString()} < b.first.GetString();
    });
    auto to = object.MemberBegin();
    for(auto& member: members) {
        to->name = member.first;
        (to++)->value = member.second;
    }
}

struct Edit {
    const char* name;
    std::function<void(LargeObject&)> make;
};

/* Through the project and its accessors */
const Edit ProjectEdits[]{
    {"create",
        [](auto& o) { o.file.create("/objects/" + o.newName() + "/a"); }},
    {"erase", [](auto& o) { o.file.erase(o.randomPath()); }},
    {"setString",
        [](auto& o) {
            o.file[o.randomPath()].setString("text");
            o.file["objects"][o.newName()]["name"].setString("text");
        }},
    {"erase and add one",
        [](auto& o) {
            o.file.erase(o.randomPath());
            ProjectSection{o.file, "objects"}.addResource(o.newName());
        }},
    {"add and erase one",
        [](auto& o) {
            const std::string name = o.newName();
            o.file.create("/objects/" + name);
            o.file.erase("/objects/" + name);
        }},
    {"replace members of a value for writing",
        [](auto& o) {
            JsonValue& object = o.file["objects"].writeValue();
            object.RemoveMember(o.randomMember());
            object.AddMember(o.newKey(), JsonValue{}, o.allocator());
        }},
    {"replace a value for writing",
        [](auto& o) {
            o.file["objects"].writeValue() = o.fresh(o.object().MemberCount());
        }},
};

/* Behind its back */
const Edit NoticedEdits[]{
    {"AddMember", [](auto& o) { o.add(); }},
    {"RemoveMember",
        [](auto& o) { o.object().RemoveMember(o.randomMember()); }},
    {"EraseMember, some",
        [](auto& o) {
            const auto first = o.object().MemberBegin() +
                std::ptrdiff_t(o.random.below(o.object().MemberCount() - 5));
            o.object().EraseMember(first, first + 5);
        }},
    {"remove and add one",
        [](auto& o) {
            o.object().RemoveMember(o.randomMember());
            o.add();
        }},
    {"erase and add one",
        [](auto& o) {
            o.object().EraseMember(o.randomMember());
            o.add();
        }},
    {"other members in the same place",
        [](auto& o) {
            const std::uint32_t count = o.object().MemberCount();
            o.object().RemoveAllMembers();
            for(std::uint32_t i = 0; i != count; ++i)
                o.add();
        }},
    {"assign", [](auto& o) { o.object() = o.fresh(o.object().MemberCount()); }},
    {"exchange",
        [](auto& o) {
            JsonValue other = o.fresh(o.object().MemberCount() + 1);
            o.object().Swap(other);
        }},
    {"parse",
        [](auto& o) {
            JsonDocument document;
            document.SetObject().AddMember("objects",
                o.fresh(o.object().MemberCount()), document.GetAllocator());
            o.file.document.Parse(jsonText(document).data());
        }},
};

/* Names may be others in the same place, with the same one last */
const Edit EditsInPlace[]{
    {"rename", [](auto& o) { o.randomMember()->name = o.newKey(); }},
    {"exchange names",
        [](auto& o) { o.randomMember()->name.Swap(o.randomMember()->name); }},
    {"exchange members",
        [](auto& o) { swapMembers(*o.randomMember(), *o.randomMember()); }},
    {"sort", [](auto& o) { sortMembers(o.object()); }},
    {"reverse",
        [](auto& o) {
            const std::uint32_t count = o.object().MemberCount();
            const auto begin = o.object().MemberBegin();
            for(std::uint32_t i = 0; i != count / 2; ++i)
                swapMembers(begin[i], begin[count - 1 - i]);
        }},
    {"exchange documents",
        [](auto& o) {
            JsonDocument document;
            document.Parse(jsonText(o.file.document).data());
            document["objects"].RemoveMember(document["objects"].MemberBegin());
            o.file.document.Swap(document);
        }},
};

std::vector<Edit> allEdits() {
    std::vector<Edit> out{std::begin(ProjectEdits), std::end(ProjectEdits)};
    out.insert(out.end(), std::begin(NoticedEdits), std::end(NoticedEdits));
    out.insert(out.end(), std::begin(EditsInPlace), std::end(EditsInPlace));
    return out;
}

/* The same edit again and again, up to where the index is made anew, with and
   without look-ups in between */
TEST(ProjectFileTest, neverStaleAfterOneKindOfEdit) {
    for(const Edit& edit: allEdits())
        for(const bool looksUp: {true, false}) {
            SCOPED_TRACE(edit.name);
            LargeObject large{500};
            large.checkSome();
            for(int i = 0; i != 60; ++i) {
                edit.make(large);
                if(looksUp) {
                    ASSERT_NO_FATAL_FAILURE(large.checkSome());
                }
            }
            large.checkAll();
        }
}

/* Around the size from which on objects are indexed, and larger ones */
TEST(ProjectFileTest, neverStaleAfterMixedEdits) {
    const std::vector<Edit> edits = allEdits();
    for(unsigned int seed = 0; seed != 100; ++seed) {
        SCOPED_TRACE(seed);
        LargeObject large{seed % 10 ? 30 + seed : 2000, seed};
        for(int i = 0; i != 150; ++i) {
            /* So that there is something to remove */
            const bool few = large.object().MemberCount() < 20;
            edits[few ? 0 : large.random.below(edits.size())].make(large);
            if(large.random.below(3)) {
                ASSERT_NO_FATAL_FAILURE(large.checkSome());
            }
        }
        large.checkAll();
    }
}

/* In scopes that continue or don't, with so many look-ups of absent names that
   the index is believed. Direct edits come between. */
TEST(ProjectFileTest, neverStaleInScopes) {
    for(unsigned int seed = 0; seed != 100; ++seed) {
        LargeObject large{seed % 4 ? 30 + seed * 2 : 2000, seed};
        std::string made;
        const auto make = [&](const Edit& edit) {
            made += std::string{edit.name} + '\n';
            edit.make(large);
        };
        for(int i = 0; i != 40; ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ":\n" + made);
            const EditScope scope = large.random.below(4)
                ? EditScope::continued(large.file)
                : EditScope{large.file};
            for(std::size_t j = large.random.below(8); j; --j) {
                make(large.object().MemberCount() < 20
                        ? ProjectEdits[0]
                        : large.random.oneOf(ProjectEdits));
                const EditScope nested{large.file};
                ASSERT_NO_FATAL_FAILURE(large.checkSome());
            }

            if(large.object().MemberCount() < 20 || large.random.below(2))
                continue;
            make(large.random.oneOf(NoticedEdits));
            if(large.random.below(4) == 0) {
                make(large.random.oneOf(EditsInPlace));
                large.file.distrustLookups();
            }
        }
        large.checkAll();
    }
}

/* Each kind of direct edit between scopes that continue, so that no other one
   draws attention to it */
TEST(ProjectFileTest, directEditsBetweenScopesAreNoticed) {
    for(const Edit& edit: NoticedEdits) {
        SCOPED_TRACE(edit.name);
        LargeObject large{500};
        for(int i = 0; i != 60; ++i) {
            {
                const EditScope scope = EditScope::continued(large.file);
                for(int j = 0; j != 20; ++j)
                    ASSERT_EQ(large.file.find("/objects/absent"), nullptr);
                ASSERT_NO_FATAL_FAILURE(large.checkSome());
                if(i % 2)
                    large.file.erase(large.randomPath());
            }
            edit.make(large);
        }
    }
}

/* Objects of other places that are looked into in turn, more than any index is
   kept for */
TEST(ProjectFileTest, neverStaleInManyLargeObjects) {
    ProjectFile file;
    JsonValue& list = file.create("/list").SetArray();
    for(int i = 0; i != 500; ++i) {
        JsonValue object{rapidjson::kObjectType};
        for(int j = 0; j != 300; ++j)
            object.AddMember(
                JsonValue{("m" + std::to_string(j)).data(), file.allocator()},
                JsonValue{i + j}, file.allocator());
        list.PushBack(std::move(object), file.allocator());
    }

    Random random{1};
    for(int i = 0; i != 5000; ++i) {
        const std::size_t at = random.below(500);
        const std::string name = "m" + std::to_string(random.below(320));
        JsonValue& object = file.document["list"][unsigned(at)];
        const auto found = object.FindMember(name.data());
        ASSERT_EQ(file.find("/list/" + std::to_string(at) + '/' + name),
            found == object.MemberEnd() ? nullptr : &found->value);

        if(random.below(50) == 0)
            file.erase(
                "/list/" + std::to_string(random.below(500)) + '/' + name);
        else if(random.below(50) == 0)
            object.Swap(file.document["list"][unsigned(random.below(500))]);
    }
}

}}

#include <array>
#include <gtest/gtest.h>

#include "Tracking/TranslationRecord.h"

namespace OrrelinEngine { namespace Tracking { namespace {

std::string written(const TranslationRecord& record) {
    const Containers::String out = record.write();
    return {out.data(), out.size()};
}

/* A text "Old" that became "New", with a translation of each */
TranslationRecord example() {
    TranslationRecord out;
    out.beginSources("en");
    out.addSource("a", "New");
    out.beginTranslations("de");
    out.addTranslation("a", "Alt", out.originOf("Old"));
    out.addMissing("b");
    out.renew();
    out.addFormerSource("Old");
    out.addFormerSource("Nobody translated this");
    out.accept("de", "numbers", "New", "Alt");
    out.accept("fr", "tags", "New", "Vieux");
    out.setArchive("Demo.zip");
    return out;
}

std::string replaced(
    std::string text, const std::string& what, const std::string& with) {
    for(std::size_t at = 0; (at = text.find(what, at)) != text.npos;
        at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

TEST(TranslationRecordTest, parse) {
    const std::string content = written(example());
    EXPECT_EQ(content.find("Nobody"), std::string::npos);
    const struct {
        const char* name;
        std::string content;
        bool succeeds = true;
    } data[]{
        {"as written", content},
        {"CRLF", replaced(content, "\n", "\r\n")},
        {"marks of a conflict",
            "<<<<<<< ours\n" +
                replaced(content, "[de]\n", "=======\n[de]\n>>>>>>> theirs\n")},
        {"foreign lines",
            replaced(content, "]\n", "]\n# note\n\nAAAA\nAAAA!AAAAA\n[\n") +
                "AAAA \"No\"\nAAAA no\n"},
        {"later version", replaced(content, "record 1", "record 2"), false},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        TranslationRecord record = example();
        EXPECT_EQ(
            record.parse({i.content.data(), i.content.size()}), i.succeeds);
        EXPECT_EQ(record.isEmpty(), !i.succeeds);
        if(!i.succeeds)
            continue;
        EXPECT_EQ(written(record), content);
        const std::uint32_t origin = record.origin("de", "a", "Alt", "New");
        EXPECT_EQ(origin, record.originOf("Old"));
        EXPECT_EQ(record.formerSource(origin), "Old");
        EXPECT_EQ(record.archive(), "Demo.zip");
        EXPECT_FALSE(record.hasTranslation("de", "b", ""));
        EXPECT_TRUE(record.isAccepted("de", "numbers", "New", "Alt"));
        /* Nothing else is, and not once a text has changed */
        for(const auto& other: {std::array{"de", "tags", "New", "Alt"},
                {"fr", "numbers", "New", "Alt"},
                {"de", "numbers", "Old", "Alt"},
                {"de", "numbers", "New", "Neu"}})
            EXPECT_FALSE(
                record.isAccepted(other[0], other[1], other[2], other[3]));
        record.withdraw("de", "numbers", "New", "Alt");
        EXPECT_FALSE(record.isAccepted("de", "numbers", "New", "Alt"));
        record.remove("fr");
        EXPECT_EQ(written(record).find("accepted"), std::string::npos);
    }
}

/* Both sides of a merge stay, so each key may be there twice */
TEST(TranslationRecordTest, merge) {
    TranslationRecord theirs;
    theirs.beginSources("en");
    theirs.addSource("a", "Newer");
    theirs.beginTranslations("de");
    theirs.addTranslation("a", "Alt", theirs.originOf("New"));
    theirs.renew();
    theirs.accept("de", "links", "New", "Alt");
    const std::string both = "<<<<<<< ours\n" + written(example()) +
        "=======\n" + written(theirs) + ">>>>>>> theirs\n";
    TranslationRecord record;
    ASSERT_TRUE(record.parse({both.data(), both.size()}));

    /* Whoever confirmed the translation for the project's text is right */
    EXPECT_EQ(record.origin("de", "a", "Alt", "New"), record.originOf("New"));
    EXPECT_EQ(record.origin("de", "a", "Alt", "Old"), record.originOf("Old"));
    EXPECT_EQ(record.compare("a", "New", "x"), SourceState::ChangedInProject);
    EXPECT_EQ(record.compare("a", "x", "Newer"), SourceState::ChangedInFile);
    EXPECT_EQ(record.compare("a", "x", "y"), SourceState::Conflict);
    EXPECT_TRUE(record.isAccepted("de", "links", "New", "Alt"));
    EXPECT_TRUE(record.isAccepted("de", "numbers", "New", "Alt"));
}

/* A name from a stranger doesn't become other lines */
TEST(TranslationRecordTest, lineBreaks) {
    TranslationRecord record;
    const std::string none = written(record);
    record.setArchive("x\n[de].zip");
    record.beginSources("e\rn");
    record.addSource("a", "A");
    record.beginTranslations("d\ne");
    record.addTranslation("a", "Ä", record.originOf("A"));
    record.accept("d\ne", "tags", "A", "Ä");
    EXPECT_EQ(written(record), none);
}

}}}

#include <string>
#include <gtest/gtest.h>
#include <Corrade/Containers/StringStl.h>

#include "Random.h"
#include "exchange/csv.h"
#include "exchange/xliff.h"

namespace OrrelinEngine { namespace Host { namespace {

using namespace Containers::Literals;

std::string randomText(Random& random) {
    const char* const parts[]{"a", "Text", " ", "\n", "\r", "\r\n", "\t", "'",
        "\"", "=", "+1", "-", "@", "＝", "＠", "＃", ",", ";", "&amp;", "<b>",
        "]]>", "é", "日本", "👋", "\\", "\xef\xbb\xbf", "&#1;", "{{x}}"};
    std::string out;
    for(std::size_t i = random.below(5); i; --i)
        out += random.oneOf(parts);
    return out;
}

ExchangeTable randomTable(Random& random) {
    ExchangeTable out;
    out.sourceCode = "en"_s;
    out.languages.resize(1 + random.below(3));
    const char* const codes[]{"de", "pt-BR", "ja"};
    for(std::size_t i = 0; i != out.languages.size(); ++i)
        out.languages[i].code = codes[i];
    for(std::size_t row = random.below(6); row; --row) {
        const auto text = [&] {
            return Containers::String{randomText(random)};
        };
        out.texts.push_back({"k" + text(), text(), text(), text(), {}, 0});
        for(ExchangeLanguage& language: out.languages) {
            language.targets.push_back({text(), TargetState::Unknown, {}});
            ExchangeTarget& target = language.targets.back();
            if(target.text.isEmpty())
                continue;
            target.state = random.oneIn(2) ? TargetState::Translated
                                           : TargetState::NeedsReview;
            target.before = text();
        }
    }
    return out;
}

/* As one table each, with only the target of the language */
void expectSame(const ExchangeTable& table, std::size_t language,
    const ExchangeTable& read, std::size_t readLanguage) {
    EXPECT_EQ(read.sourceCode, table.sourceCode);
    EXPECT_TRUE(read.faults.empty());
    ASSERT_EQ(read.texts.size(), table.texts.size());
    EXPECT_EQ(
        read.languages[readLanguage].code, table.languages[language].code);
    for(std::size_t i = 0; i != table.texts.size(); ++i) {
        const ExchangeText& text = table.texts[i];
        const Containers::String& target =
            table.languages[language].targets[i].text;
        EXPECT_EQ(read.texts[i].key, text.key);
        EXPECT_EQ(read.texts[i].source, text.source);
        EXPECT_EQ(read.languages[readLanguage].targets[i].text, target);
        const Marks marks{text.key};
        const Containers::StringView list = read.texts[i].marks;
        EXPECT_TRUE(marks.areIn(list, "en", text.source));
        EXPECT_EQ(marks.areIn(list, table.languages[language].code, target),
            !target.isEmpty());
        EXPECT_FALSE(marks.areIn(list, "en", text.source + "!"));
    }
}

TEST(ExchangeTest, RoundTrip) {
    Random random{environment("SEED", 1)};
    for(std::size_t i = 0; i != 3000; ++i) {
        SCOPED_TRACE(i);
        const ExchangeTable table = randomTable(random);
        std::string csv;
        writeCsv(csv, table, [] {});
        ExchangeTable read;
        ASSERT_EQ(readCsv(csv, "en", read), "");
        std::vector<std::string> xliff(table.languages.size());
        std::vector<std::string*> outputs;
        for(std::string& output: xliff)
            outputs.push_back(&output);
        writeXliff(outputs, table, "A \"name\"", [] {});
        for(std::size_t l = 0; l != xliff.size(); ++l) {
            expectSame(table, l, read, l);
            std::vector<ExchangeTable> files;
            ASSERT_EQ(readXliff(xliff[l], files), "");
            ASSERT_EQ(files.size(), 1);
            expectSame(table, l, files[0], 0);
            for(std::size_t t = 0; t != table.texts.size(); ++t)
                EXPECT_EQ(files[0].languages[0].targets[t].state,
                    table.languages[l].targets[t].state);
        }
        if(testing::Test::HasFailure())
            break;
    }
}

TEST(ExchangeTest, Formulas) {
    const struct {
        const char *text, *cell;
    } rows[]{{"=1", "'=1"}, {"'=1", "''=1"}, {"''-", "'''-"}, {"'tis", "'tis"},
        {"'", "'"}, {"＋1", "'＋1"}, {"a=1", "a=1"},
        {"\t;\"=", "\"'\t;\"\"=\""}, {"a;=1", "\"a;=1\""}, {" =", "\" =\""}};
    for(const auto& row: rows) {
        ExchangeTable table;
        table.sourceCode = "en"_s;
        table.texts.push_back({"k"_s, row.text, {}, {}, {}, 0});
        std::string csv;
        writeCsv(csv, table, [] {});
        EXPECT_NE(csv.find(",,," + std::string{row.cell} + ','), csv.npos)
            << csv;
    }
}

/* As spreadsheets and tools write them, with what is read of the last text, or
   with the fault */
const struct {
    const char *content, *expected;
} Csv[]{{"key;en;de\nk;\"a;\"\"b\";c\n", "k|a;\"b|c|2"},
    {"de\ten\tkey\r\rd\te\tk", "k|e|d|3"},
    {"\"key\",\"en\",\"de\"\r\nk,e\r\n,,,,\r\n\r\n", "k|e||2"},
    {"key,en,de\nk,\"two\nlines\",x\nl,\"e\",\"'=d\"", "l|e|=d|4"},
    {"", "the first row doesn't name a column 'key'"},
    {"key,de\n", "the first row doesn't name a column 'en'"},
    {"key,en,de,de\n", "two columns are named 'de'"},
    {"key,en\nk,e,d\n",
        "the row at line 2 has 3 cells, but there are 2 columns"},
    {"key,en\nk,\"\n\"e", "text behind a closing quotation mark at line 3"},
    {"key,en\n\nk,\"e\n", "the quotation mark at line 3 isn't closed"}};

std::string lastText(const ExchangeTable& table) {
    if(!table.faults.empty())
        return table.faults.back();
    const ExchangeText& text = table.texts.back();
    return std::string{text.key + "|" + text.source + "|" +
               table.languages.back().targets.back().text + "|"} +
        std::to_string(text.line);
}

TEST(ExchangeTest, Csv) {
    for(const auto& data: Csv) {
        ExchangeTable table;
        const Containers::String fault = readCsv(data.content, "en", table);
        EXPECT_EQ(fault.isEmpty() ? lastText(table) : std::string{fault},
            data.expected)
            << data.content;
    }
}

/* Inside of a file element, if it doesn't begin with one */
const struct {
    const char *content, *expected;
} Xliff[]{
    {"<group><group>\n<trans-unit id='i'><source>s</source><target>t</target>"
     "<alt-trans><target>u</target></alt-trans></trans-unit></group></group>",
        "i|s|t|2"},
    {"<x:trans-unit xmlns:x='y' id='2'><x:source>s</x:source><x:target/>"
     "<x:context-group name='po-reference'><x:context "
     "context-type='sourcefile'>a</x:context><x:context "
     "context-type='linenumber'>b</x:context></x:context-group></x:trans-unit>",
        "a:b|s||1"},
    {"<trans-unit id='1' resname='k'><source><![CDATA[<]]>&#x1F44B;</source>"
     "<target><mrk mtype='seg'>a</mrk> <g id='1'>b</g></target></trans-unit>",
        "k|<👋|a b|1"},
    {"<trans-unit id='k'><source>s</source><target>a<x id='1'/></target>"
     "</trans-unit>",
        "'k' at line 1 has an element inside its text"},
    {"\n&lol;", "a reference to something that isn't a character at line 2"},
    {"&#xd800;", "a reference to something that isn't a character at line 1"},
    {"&#1;", "a reference to something that isn't a character at line 1"},
    {"\n\n\x01", "a character that XML can't have at line 3"},
    {"<a>\n</b>", "Start-end tags mismatch at line 2"},
    {"<!DOCTYPE xliff [<!ENTITY a \"b\">]><xliff/>",
        "a document type, which isn't read at line 1"},
    {"<html/>", "it isn't XLIFF"},
    {"<xliff version='2.0'/>",
        "it's XLIFF 2.0; only versions up to 1.2 are read"},
    {"<xliff version='1.2'>\n<file source-language='en'/></xliff>",
        "the file element at line 2 doesn't name its target-language"}};

TEST(ExchangeTest, Xliff) {
    for(const auto& data: Xliff) {
        std::string content = data.content;
        if(std::string{"<x <! <h"}.find(content.substr(0, 2)) ==
                std::string::npos ||
            content[2] == ':')
            content = "<xliff version='1.2'><file source-language='en' "
                      "target-language='de'><body>" +
                content + "</body></file></xliff>";
        std::vector<ExchangeTable> files;
        const Containers::String fault = readXliff(content, files);
        EXPECT_EQ(fault.isEmpty() ? lastText(files.at(0)) : std::string{fault},
            data.expected)
            << data.content;
    }
    EXPECT_FALSE(xmlHolds("a\x0b"));
    EXPECT_FALSE(xmlHolds("\xef\xbf\xbe"));
    EXPECT_TRUE(xmlHolds("a\t\r\n\xef\xbb\xbf\xef\xbf\xbd"));
    /* Nothing is read recursively */
    std::string deep = "<xliff version='1.2'>";
    for(int i = 0; i != 1000000; ++i)
        deep += "<a>";
    std::vector<ExchangeTable> files;
    EXPECT_NE(readXliff(deep, files), "");
}

}}}

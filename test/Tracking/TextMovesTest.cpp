#include "Project.h"
#include "Tracking/TranslationRecord.h"
#include "Tracking/TextMoves.h"

namespace OrrelinEngine { namespace Tracking { namespace {

TEST(TextMovesTest, targets) {
    /* Each text is one letter behind its key, X at the key is chosen */
    const struct {
        const char *name, *file, *project, *moves;
    } data[]{
        {"one in front", "0A1B", "0N1A2B", "0>1 1>2 "},
        {"the first removed", "0A1B2C", "0B1C", "1>0 2>1 "},
        {"swapped", "0A1B", "0B1A", "0>1 1>0 "},
        {"twice in the project", "0A1B", "0N1A2A", ""},
        {"twice in the file", "0A1A", "0N1B2A", ""},
        {"vanished key", "9A", "0A", "9>0 "},
        {"chosen key", "XA", "XN1A", ""},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        std::string json = R"({"texts": {)";
        for(const char* c = i.project; *c; c += 2)
            json += (c == i.project ? "\"" : ",\"") + std::string{c, 1} +
                "\":\"" + c[1] + '"';
        Project project{Containers::String{json + "}}"}};
        project.changes().pushChange("/texts/X_term", "X", false);
        TranslationRecord record;
        record.beginSources("en");
        for(const char* c = i.file; *c; c += 2)
            record.addSource({c, 1}, {c + 1, 1});
        record.renew();

        const std::vector<Term> terms = listTerms(project.editor());
        const TextMoves moves{project.editor(), terms, record};
        std::string found;
        for(const char* c = i.file; *c; c += 2) {
            const std::size_t term = moves.target({c, 1});
            if(term != TextMoves::None)
                found += *c + (">" + text(terms[term].key)) + ' ';
        }
        EXPECT_EQ(found, i.moves);
    }
}

}}}

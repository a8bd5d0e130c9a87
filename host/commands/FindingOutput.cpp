#include "FindingOutput.h"

#include <algorithm>
#include <map>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "terminal/JsonList.h"
#include "terminal/Table.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

const char* nameOf(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

Style styleOf(Severity severity) {
    return severity == Severity::Error ? Style::Bad : Style::Plain;
}

/* Calls the function with each finding that isn't accepted */
template<class F> void forEachOpen(const FaultyText& text, F&& function) {
    for(const Finding& finding: text.findings)
        if(!finding.isAccepted)
            function(finding);
}

/* How many findings there are of each kind */
struct Count {
    std::size_t errors = 0, warnings = 0;

    void add(Severity severity) {
        ++(severity == Severity::Error ? errors : warnings);
    }
    Containers::String text() const {
        return Utility::format(
            "{}, {}", counted(errors, "error"), counted(warnings, "warning"));
    }
};

Count countOf(const FaultyText& text) {
    Count out;
    forEachOpen(
        text, [&](const Finding& finding) { out.add(finding.rule->severity); });
    return out;
}

Containers::String placeOf(const FaultyText& text) {
    return text.place ? Utility::format("{}:{}:{}", text.file, text.place->line,
                            text.place->column)
                      : text.file;
}

void printText(const FaultyText& text) {
    printCut(Utility::format("  {}  {}", text.key, placeOf(text)));
    forEachOpen(text, [&](const Finding& finding) {
        printCut(
            Utility::format("    {}: {}: {}", nameOf(finding.rule->severity),
                finding.rule->name, Containers::StringView{finding.detail}),
            styleOf(finding.rule->severity));
    });
    printCut("    source:      " + text.source);
    printCut("    translation: " + text.translation);
}

typedef std::vector<const FaultyText*> Texts;

/* Prints the first ones, those with errors before others */
void printLanguage(Containers::StringView title, Texts& texts) {
    Count count;
    for(const FaultyText* const text: texts)
        forEachOpen(*text,
            [&](const Finding& finding) { count.add(finding.rule->severity); });
    printLine(Utility::format("{}: {}", title, count.text()), Style::Bold);
    std::stable_partition(texts.begin(), texts.end(),
        [](const FaultyText* text) { return countOf(*text).errors != 0; });
    for(std::size_t i = 0; i != std::min(texts.size(), Lines::MaxCount); ++i)
        printText(*texts[i]);
    if(texts.size() > Lines::MaxCount)
        printLine(
            Utility::format("  and {} more", texts.size() - Lines::MaxCount));
    printLine();
}

void printSum(const Findings& findings) {
    std::map<const Rule*, std::size_t> counts;
    Count count;
    std::size_t acceptedCount = 0;
    for(const FaultyText& text: findings.texts)
        for(const Finding& finding: text.findings) {
            if(finding.isAccepted) {
                ++acceptedCount;
                continue;
            }
            ++counts[finding.rule];
            count.add(finding.rule->severity);
        }
    /* Rules are in the order of their table */
    if(!counts.empty()) {
        Table table{{{"rule"}, {"severity"}, {"findings", ColumnKind::Number}}};
        for(const auto& rule: counts)
            table.add({{rule.first->name},
                {nameOf(rule.first->severity), styleOf(rule.first->severity)},
                {Utility::format("{}", rule.second)}});
        table.print();
        printLine();
    }
    printLine(Utility::format("{} in {} of {}{}", count.text(),
        counted(findings.translationCount, "translation"),
        counted(findings.languageCount, "language"),
        acceptedCount ? Utility::format("; {} accepted", acceptedCount)
                      : Containers::String{}));
}

/* Unreserved characters and slashes stay */
std::string uriOf(Containers::StringView path) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string out = path.hasPrefix('/') ? "file://" : "";
    for(const char c: path) {
        const auto byte = static_cast<unsigned char>(c);
        if((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
            (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '_' ||
            c == '~' || c == '/')
            out += c;
        else
            ((out += '%') += Digits[byte >> 4]) += Digits[byte & 15];
    }
    return out;
}

class SarifWriter {
public:
    explicit SarifWriter(): _writer{_out} { _writer.SetIndent(' ', 2); }

    void write(const Findings& findings) {
        object([&] {
            add("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
            add("version", "2.1.0");
            list("runs", [&] {
                object([&] {
                    writeTool();
                    add("columnKind", "unicodeCodePoints");
                    list("results", [&] { writeResults(findings); });
                });
            });
        });
        _out.Put('\n');
        flush();
    }

private:
    template<class F> void object(F&& content) {
        _writer.StartObject();
        content();
        _writer.EndObject();
    }
    template<class F> void object(const char* key, F&& content) {
        _writer.Key(key);
        object(content);
    }
    template<class F> void list(const char* key, F&& content) {
        _writer.Key(key);
        _writer.StartArray();
        content();
        _writer.EndArray();
    }
    void add(const char* key, Containers::StringView value) {
        _writer.Key(key);
        _writer.String(value.data(), rapidjson::SizeType(value.size()));
    }
    void add(const char* key, std::size_t value) {
        _writer.Key(key);
        _writer.Uint64(value);
    }
    void addText(const char* key, Containers::StringView value) {
        object(key, [&] { add("text", value); });
    }

    void writeTool() {
        object("tool", [&] {
            object("driver", [&] {
                add("name", "orrelin-localize");
                list("rules", [&] {
                    for(const Rule& rule: allRules())
                        object([&] {
                            add("id", rule.name);
                            addText("shortDescription", rule.says);
                            object("defaultConfiguration",
                                [&] { add("level", nameOf(rule.severity)); });
                        });
                });
            });
        });
    }

    void writeResults(const Findings& findings) {
        for(const FaultyText& text: findings.texts) {
            forEachOpen(text,
                [&](const Finding& finding) { writeResult(text, finding); });
            flush();
        }
    }

    void writeResult(const FaultyText& text, const Finding& finding) {
        object([&] {
            add("ruleId", finding.rule->name);
            add("ruleIndex", std::size_t(finding.rule - allRules().data()));
            add("level", nameOf(finding.rule->severity));
            addText("message",
                Utility::format("{} ({}): {}. Source: \"{}\". Translation: "
                                "\"{}\".",
                    finding.rule->says, text.key,
                    Containers::StringView{finding.detail}, text.source,
                    text.translation));
            list("locations", [&] { object([&] { writeLocation(text); }); });
        });
    }

    void writeLocation(const FaultyText& text) {
        object("physicalLocation", [&] {
            object(
                "artifactLocation", [&] { add("uri", uriOf(text.artifact)); });
            if(text.place)
                object("region", [&] {
                    add("startLine", text.place->line);
                    add("startColumn", text.place->column);
                });
        });
        list("logicalLocations", [&] {
            object([&] {
                add("name", text.key);
                add("fullyQualifiedName", text.code + "/" + text.key);
                add("kind", "resource");
            });
        });
    }

    void flush() {
        printJson({_out.GetString(), _out.GetSize()});
        _out.Clear();
    }

    rapidjson::StringBuffer _out;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> _writer;
};

}

void printFindings(
    const std::vector<ProjectLanguage>& languages, const Findings& findings) {
    std::map<Containers::String, Texts, StrLess> texts;
    for(const FaultyText& text: findings.texts) {
        const Count count = countOf(text);
        if(count.errors || count.warnings)
            texts[text.code].push_back(&text);
    }
    for(auto& language: texts) {
        const auto known = std::find_if(languages.begin(), languages.end(),
            [&](const ProjectLanguage& other) {
                return other.code == language.first;
            });
        printLanguage(known == languages.end()
                ? language.first
                : Utility::format("{} ({})", known->name, language.first),
            language.second);
    }
    printSum(findings);
}

void printJson(const Findings& findings) {
    JsonList out;
    for(const FaultyText& text: findings.texts)
        forEachOpen(text, [&](const Finding& finding) {
            out.beginObject();
            out.add("rule", finding.rule->name);
            out.add("severity",
                Containers::StringView{nameOf(finding.rule->severity)});
            out.add("detail", Containers::StringView{finding.detail});
            out.add("code", text.code);
            out.add("key", text.key);
            out.add("source", text.source);
            out.add("translation", text.translation);
            out.add("path", text.path);
            out.add("file", text.file);
            if(text.place) {
                out.add("line", text.place->line);
                out.add("column", text.place->column);
            }
            out.endObject();
        });
    out.print();
}

void printSarif(const Findings& findings) {
    SarifWriter{}.write(findings);
}

}}

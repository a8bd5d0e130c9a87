#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <benchmark/benchmark.h>
#include <Corrade/Containers/StringStl.h>
#include <rapidjson/document.h>

#include "Tracking/TranslationRecord.h"
#include "shared/LocalizationData.h"

namespace {

constexpr int ObjectCount = 50000;
constexpr int TermsPerObject = 10;
const char* const Languages[]{"en", "de", "fr", "es", "it"};

std::string sentence(int object, int index) {
    const int i = object * TermsPerObject + index;
    return "Gallery " + std::to_string(i) +
        std::string{": tells how people found their way."}.substr(
            0, 8 + std::size_t(i) * 7 % 19);
}

/* Each second one is of a script component */
void writeComponent(std::ostream& out, int object, int index) {
    const char* const type = index % 2 ? "guide" : "text";
    out << R"(
                {
                    "type": ")"
        << type << R"(",
                    ")"
        << type << R"(": {
                        ")"
        << (index % 2 ? "hint" : "text") << "\": \"" << sentence(object, index)
        << R"(",
                        "size": 12.5,
                        "color": "0xffffffff"
                    }
                })"
        << (index + 1 == TermsPerObject ? "" : ",");
}

void writeProject(const std::string& folder, bool isArchived) {
    std::filesystem::create_directory(folder);
    std::ofstream{folder + "/components.json"}
        << R"({"guide": {"hint": "string", "size": "float"}})";
    std::ofstream out{folder + "/project.json"};
    out << R"({
    "settings": {
        "project": {
            "name_translate": false,
            "name": "large"
        },
        "localization": {
            "defaultLanguage": "en",
            "enableZipCompression": )"
        << (isArchived ? "true" : "false") << R"(
        }
    },
    "languages": {)";
    for(const char* const language: Languages)
        out << (language == Languages[0] ? "\n" : ",\n") << "        \""
            << language << "\": {}";
    out << R"(
    },
    "objects": {)";
    for(int object = 0; object != ObjectCount; ++object) {
        out << (object ? ",\n" : "\n") << "        \"exhibit-" << object
            << R"(": {
            "components": [)";
        for(int i = 0; i != TermsPerObject; ++i)
            writeComponent(out, object, i);
        out << R"(
            ]
        })";
    }
    out << "\n    }\n}\n";
}

/* In the order of the keys, as they are exported */
void writeLanguage(
    const std::string& file, const std::string& end, bool isDefault) {
    std::vector<std::string> objects;
    for(int i = 0; i != ObjectCount; ++i)
        objects.push_back(std::to_string(i) + '-');
    std::sort(objects.begin(), objects.end());
    std::ofstream out{file};
    out << "{\n  \"translation\": {\n";
    for(const std::string& object: objects)
        for(const int i: {1, 3, 5, 7, 9, 0, 2, 4, 6, 8}) {
            const bool isLast = &object == &objects.back() && i == 8;
            out << "    \"exhibit-" << object << (i % 2 ? "js-" : "text-") << i
                << (i % 2 ? "-hint" : "") << "\": \""
                << sentence(std::atoi(object.data()), i)
                << (isDefault && !isLast ? "" : end)
                << (isLast ? "\"\n" : "\",\n");
        }
    out << "  }\n}\n";
}

/* Files that were written just before are read twice, to be sure that nobody
   writes them yet */
void settle() {
    std::this_thread::sleep_for(std::chrono::seconds{3});
}

std::string makeFolder() {
    std::string out = std::filesystem::temp_directory_path() / "orrelin-XXXXXX";
    if(!mkdtemp(out.data()))
        std::abort();
    return out;
}

/* A project with loose files and one with an archive. What children take at
   most begins with what this process takes, so it's kept small. */
struct Projects {
    explicit Projects() {
        writeProject(loose, false);
        writeProject(archived, true);
        std::filesystem::create_directory(loose + "/languages");
        for(const char* const language: Languages)
            if(language != Languages[0])
                writeLanguage(languageFile(language), language, false);
        writeLanguage(languageFile("en"), "", true);
        settle();
        /* Begins the record of what the translations were made from */
        if(std::system(
               (HOST_BINARY " import " + loose + " > /dev/null").data()))
            std::abort();
    }
    ~Projects() { std::filesystem::remove_all(folder); }

    std::string languageFile(const std::string& language) const {
        return loose + "/languages/" + language + ".json";
    }

    std::string record() const {
        return loose + "/languages/" +
            OrrelinEngine::Tracking::TranslationRecord::FileName;
    }

    std::vector<std::string> files(bool withLanguages) const {
        std::vector<std::string> out{loose + "/project.json"};
        if(withLanguages)
            for(const char* const language: Languages)
                out.push_back(languageFile(language));
        return out;
    }

    std::string folder = makeFolder();
    std::string loose = folder + "/loose";
    std::string archived = folder + "/archived";
};

Projects& projects() {
    static Projects out;
    return out;
}

/* A child's result is whether it did what it should */
void measure(benchmark::State& state, const std::vector<std::string>& files,
    const std::function<void()>& prepare, const std::function<bool()>& child) {
    double size = 0.0, peak = 0.0;
    for(const std::string& file: files)
        size += double(std::filesystem::file_size(file));
    for(auto _: state) {
        prepare();
        const auto begin = std::chrono::steady_clock::now();
        const pid_t process = fork();
        if(process == 0)
            _exit(child() ? 0 : 1);
        int status;
        rusage usage;
        if(process < 0 || wait4(process, &status, 0, &usage) < 0 || status != 0)
            state.SkipWithError("failed");
        state.SetIterationTime(std::chrono::duration<double>(
            std::chrono::steady_clock::now() - begin)
                                   .count());
        peak = std::max(peak, double(usage.ru_maxrss) * 1024.0);
    }
    state.counters["peakBytes"] = peak;
    state.counters["fileBytes"] = size;
    state.counters["recordBytes"] =
        double(std::filesystem::file_size(projects().record()));
    state.counters["languageBytes"] =
        double(std::filesystem::file_size(projects().languageFile("en")));
}

/* Calls the function with each document and whether it's the project */
template<class F>
bool parse(const std::vector<std::string>& files, F&& function) {
    /* The project stays, each other file only until the next */
    std::vector<rapidjson::Document> documents(2);
    for(const std::string& file: files) {
        const std::size_t size = std::filesystem::file_size(file);
        std::unique_ptr<char[]> content{new char[size + 1]};
        std::ifstream{file}.read(content.get(), std::streamsize(size));
        content[size] = '\0';
        const bool isProject = &file == &files.front();
        rapidjson::Document& out = documents[!isProject];
        out = rapidjson::Document{};
        if(out.Parse(content.get()).HasParseError())
            return false;
        content = nullptr;
        function(out, isProject);
    }
    return true;
}

/* Puts each term right where it belongs, without a search */
void fillTerms(const rapidjson::Document& project,
    OrrelinEngine::TermPathMap& terms, OrrelinEngine::TermMap& strings) {
    strings.reserve(std::size_t{ObjectCount} * TermsPerObject);
    OrrelinEngine::TermPathMap::iterator behind[]{terms.end(), terms.end()};
    std::string key, path;
    for(const auto& object: project["objects"].GetObject()) {
        const std::string id = object.name.GetString();
        for(int i = 0; i != TermsPerObject; ++i) {
            const bool isScript = i % 2;
            const std::string index = std::to_string(i);
            key = id + (isScript ? "-js-" : "-text-") + index +
                (isScript ? "-hint" : "");
            path = "/objects/" + id + "/components/" + index +
                (isScript ? "/guide/hint" : "/text/text");
            behind[isScript] =
                std::next(terms.emplace_hint(behind[isScript], key, path));
            strings.emplace(path, key);
        }
    }
}

/* The least that can be done to have all texts: parses the files, and fills the
   tables that the tools share with the editor */
bool fillTables(const std::vector<std::string>& files) {
    /* Freeing them isn't measured with the commands either */
    auto& data = *new OrrelinEngine::LocalizationData;
    auto& strings = *new OrrelinEngine::TermMap;
    int language = 0;
    return parse(
        files, [&](const rapidjson::Document& document, bool isProject) {
            if(isProject) {
                fillTerms(document, data.terms, strings);
                return;
            }
            OrrelinEngine::TranslationMap& out =
                data.translations[Languages[language++]];
            for(const auto& text: document["translation"].GetObject())
                out.emplace_hint(out.end(), text.name.GetString(),
                    OrrelinEngine::Containers::String{text.value.GetString()});
        });
}

std::string readText(const std::string& file) {
    std::string out(std::filesystem::file_size(file), '\0');
    std::ifstream{file}.read(out.data(), std::streamsize(out.size()));
    return out;
}

OrrelinEngine::Containers::StringView view(const rapidjson::Value& text) {
    return {text.GetString(), text.GetStringLength()};
}

/* All that is done for the record in an import or export where nothing moved:
   reads it, takes each text from it and puts it into a new one, and writes
   that. Parses the language files for their texts, the default one first. */
bool renewRecord(const std::vector<std::string>& files) {
    typedef OrrelinEngine::Tracking::TranslationRecord Record;
    Record& record = *new Record;
    if(!record.parse(readText(projects().record())))
        return false;
    rapidjson::Value::ConstMemberIterator sources, source;
    int language = 0;
    std::uint64_t sum = 0;
    const bool isRead =
        parse(files, [&](const rapidjson::Document& document, bool isDefault) {
            const char* const code = Languages[language++];
            const auto texts = document["translation"].GetObject();
            if(isDefault) {
                record.beginSources(code);
                sources = texts.MemberBegin();
            } else
                record.beginTranslations(code);
            source = sources;
            for(const auto& text: texts) {
                const auto key = view(text.name), value = view(text.value);
                if(isDefault) {
                    /* As it's found out that the text didn't move */
                    sum += record.hasSource(key) + Record::originOf(value);
                    record.addSource(key, value);
                    continue;
                }
                const auto now = view((source++)->value);
                const std::uint32_t origin =
                    record.origin(code, key, value, now);
                /* Whether it's outdated */
                sum += origin != Record::originOf(now);
                record.addTranslation(key, value, origin);
            }
        });
    benchmark::DoNotOptimize(sum);
    const OrrelinEngine::Containers::String content = record.write();
    std::ofstream{projects().folder + "/record"}.write(
        content.data(), std::streamsize(content.size()));
    return isRead;
}

bool run(std::vector<const char*> arguments, const std::string& project) {
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, STDOUT_FILENO);
    if(chdir(projects().folder.data()) != 0)
        return false;
    arguments.insert(arguments.begin(), HOST_BINARY);
    arguments.insert(arguments.begin() + 2, project.data());
    arguments.push_back(nullptr);
    execv(HOST_BINARY, const_cast<char**>(arguments.data()));
    return false;
}

void changeSource() {
    static int count = 0;
    writeLanguage(projects().languageFile("en"), std::to_string(++count), true);
    settle();
}

void changeFiles() {
    for(const char* const language: Languages)
        std::ofstream{projects().languageFile(language), std::ios::app} << "\n";
    settle();
}

/* The archive is written from loose files each time, with their record */
void removeArchive() {
    const std::string folder = projects().archived + "/languages";
    std::filesystem::remove_all(folder);
    std::filesystem::copy(projects().loose + "/languages", folder);
    settle();
}

struct Command {
    const char* name;
    /* None to only fill the tables */
    std::vector<const char*> arguments;
    bool readsLanguages, isArchived;
    void (*prepare)();
};

void add(const Command& command) {
    const auto addOne = [&](const char* who, auto&& prepare, auto&& child) {
        benchmark::RegisterBenchmark(
            (std::string{"commands/"} + command.name + "/" + who).data(),
            [=](benchmark::State& state) {
                measure(state, projects().files(command.readsLanguages),
                    prepare, child);
            })
            ->Iterations(3)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    addOne("ours", command.prepare, [command] {
        return command.arguments.empty()
            ? fillTables(projects().files(command.readsLanguages))
            : run(command.arguments,
                  command.isArchived ? projects().archived : projects().loose);
    });
    addOne(
        "reference", [] {},
        [command] {
            return parse(projects().files(command.readsLanguages),
                [](const rapidjson::Document&, bool) {});
        });
}

/* Reading alone, and with all that is done for the record */
void addRecord() {
    const auto files = [] {
        std::vector<std::string> out = projects().files(true);
        out.erase(out.begin());
        return out;
    };
    const auto add = [&](const char* name, auto&& child) {
        benchmark::RegisterBenchmark(name,
            [=](benchmark::State& state) {
                measure(
                    state, files(), [] {}, [=] { return child(files()); });
            })
            ->Iterations(3)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    add("commands/(record alone)/ours", renewRecord);
    add("commands/(record alone)/reference",
        [](const std::vector<std::string>& all) {
            return parse(all, [](const rapidjson::Document&, bool) {});
        });
}

const bool registered = [] {
    addRecord();
    const auto nothing = [] {};
    for(const Command& command:
        {Command{"(tables of terms alone)", {}, false, false, nothing},
            Command{
                "(tables of terms and texts alone)", {}, true, false, nothing},
            Command{"terms", {"terms"}, false, false, nothing},
            Command{"terms --json", {"terms", "--json"}, false, false, nothing},
            Command{"status", {"status"}, true, false, nothing},
            Command{"check", {"check"}, true, false, nothing},
            Command{"import --dry-run", {"import", "--dry-run"}, true, false,
                nothing},
            Command{"import, one text changed", {"import"}, true, false,
                changeSource},
            Command{"export", {"export"}, true, false, changeFiles},
            Command{
                "export to an archive", {"export"}, true, true, removeArchive},
            Command{"status of an archive", {"status"}, true, true, nothing},
            Command{"import of an archive", {"import"}, true, true, nothing}})
        add(command);
    return true;
}();

}

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
#include <rapidjson/document.h>

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
        if(std::system((HOST_BINARY " import " + loose + " > /dev/null").data()))
            std::abort();
    }
    ~Projects() { std::filesystem::remove_all(folder); }

    std::string languageFile(const std::string& language) const {
        return loose + "/languages/" + language + ".json";
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
}

bool parse(const std::vector<std::string>& files) {
    /* The project stays, each other file only until the next */
    std::vector<rapidjson::Document> documents(2);
    for(const std::string& file: files) {
        const std::size_t size = std::filesystem::file_size(file);
        const std::unique_ptr<char[]> content{new char[size + 1]};
        std::ifstream{file}.read(content.get(), std::streamsize(size));
        content[size] = '\0';
        rapidjson::Document& out = documents[&file != &files.front()];
        out = rapidjson::Document{};
        if(out.Parse(content.get()).HasParseError())
            return false;
    }
    return true;
}

bool run(std::vector<const char*> arguments, const std::string& project) {
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, STDOUT_FILENO);
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

/* The archive is written from loose files each time */
void removeArchive() {
    const std::string folder = projects().archived + "/languages";
    if(!std::filesystem::exists(folder))
        std::filesystem::copy(projects().loose + "/languages", folder);
    std::filesystem::remove(folder + "/large.zip");
    settle();
}

struct Command {
    const char* name;
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
        return run(command.arguments,
            command.isArchived ? projects().archived : projects().loose);
    });
    addOne(
        "reference", [] {},
        [command] { return parse(projects().files(command.readsLanguages)); });
}

const bool registered = [] {
    const auto nothing = [] {};
    for(const Command& command:
        {Command{"terms", {"terms"}, false, false, nothing},
            Command{"terms --json", {"terms", "--json"}, false, false, nothing},
            Command{"status", {"status"}, true, false, nothing},
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

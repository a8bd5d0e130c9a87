#include <map>
#include <sstream>
#include <vector>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "TemporaryFolder.h"

namespace OrrelinEngine { namespace {

namespace Fs = std::filesystem;

const std::string Archive = "museum/languages/Meridian House Museum.zip";

struct Output {
    int exitCode;
    std::string out;
    std::string err;
};

/* The museum in a folder of its own, in which the program runs */
class Host {
public:
    explicit Host() {
        unsetenv("COLUMNS");
        Fs::copy(EXAMPLES "/museum", folder.path("museum"),
            Fs::copy_options::recursive);
    }

    /* What the program says to arguments, as the shell understands them */
    Output run(const std::string& arguments,
        const std::string& shellSetup = "true") const {
        const std::string command = "cd '" + folder.path() + "' && " +
            shellSetup + " && '" HOST_BINARY "' " + arguments + " > '" +
            folder.path("out") + "' 2> '" + folder.path("err") + "'";
        const int status = std::system(command.data());
        const Output output{WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            folder.read("out"), folder.read("err")};
        Fs::remove(folder.path("out"));
        Fs::remove(folder.path("err"));
        return output;
    }

    /* What commands print in the folder, with names for what is in it. All have
       to succeed but those that `fails` or `misused` is written before. */
    std::string shell(const std::string& commands) const {
        const std::string all = "set -e; cd '" + folder.path() +
            "'; exec > out 2> err; project=museum/project.json; "
            "de=museum/languages/de.json; fr=museum/languages/fr.json; "
            "host='" HOST_BINARY "'; archive='" +
            Archive +
            "'; data='" TEST_DATA "'; translations='" EXAMPLES
            "/museum/translations'; "
            "useArchive='sed -i /Compression/s/false/true/ museum/project.json'"
            "; exits() { status=0; code=$1; shift; \"$@\" 2>&1 || status=$?; "
            "test $status = $code || echo $status: $* >&2; }; "
            "fails() { exits 2 \"$@\"; }; misused() { exits 1 \"$@\"; }; " +
            commands;
        EXPECT_EQ(std::system(all.data()), 0) << commands;
        EXPECT_EQ(folder.read("err"), "");
        const std::string out = folder.read("out");
        Fs::remove(folder.path("out"));
        Fs::remove(folder.path("err"));
        return out;
    }

    /* Every file with its content */
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> out;
        for(const auto& entry: Fs::recursive_directory_iterator{folder.path()})
            out[entry.path()] = entry.is_directory()
                ? ""
                : TemporaryFolder::readFile(entry.path());
        return out;
    }

    TemporaryFolder folder;
};

void expectContains(
    const std::string& text, const std::vector<std::string>& parts) {
    for(const std::string& part: parts)
        EXPECT_NE(text.find(part), std::string::npos)
            << "'" << part << "' not in:\n"
            << text;
}

/* What must fail with not a byte changed on the disk, after what the shell did
   to the museum */
const struct {
    const char *name, *setup, *arguments;
    std::vector<std::string> err;
    /* Of 512 bytes, that a file can't grow beyond, as if the disk were full;
       language files have 6 to 7 kB, the project 38 kB */
    const char* blocks = "unlimited";
} Protected[]{
    {"FullDiskOnExport", "rm $de", "export museum",
        {"can't write museum/languages/de.json: File too large"}, "4"},
    {"FullDiskOnRemove", "", "remove museum de",
        {"orrelin-localize: can't write museum/"}, "24"},
    {"FullDiskOnAdd", "", "add museum fr",
        {"orrelin-localize: can't write museum/"}, "24"},
    {"FullDiskOnRename", "", "rename museum hours h",
        {"orrelin-localize: can't write museum/"}, "24"},
    {"FullOutput", "", "terms museum",
        {"orrelin-localize: can't write to the standard output\n"}, "4"},
    {"InvalidJson", "printf '{\"translation\": {' > $de", "export museum",
        {"orrelin-localize: can't open museum/languages/de.json: ",
            "\norrelin-localize: nothing was written, as what can't be read "}},
    {"InvalidJsonOnImport", R"(printf '{"translation":\n{"hours" ""}}' > $de)",
        "import museum",
        {"orrelin-localize: can't open museum/languages/de.json: Missing a "
         "colon after a name of object member at line 2, column 10\n"}},
    {"InvalidJsonOnRename", "printf '[]' > $de", "rename museum hours h",
        {"can't open museum/languages/de.json: ", "nothing was renamed"}},
    {"InvalidJsonOnStatus", "printf '{\"de\": {}}' > $de", "status museum",
        {"museum/languages/de.json has no object \"translation\""}},
    {"FileThatIsFolder", "rm $de && mkdir $de", "export museum",
        {"museum/languages/de.json"}},
    {"FileThatIsFolderOnStatus", "rm $de && mkdir $de", "status museum",
        {"can't read museum/languages/de.json: Is a directory\n"}},
    {"UnknownTerm", "sed -i 's/\"hours\"/\"hourz\"/' $de", "export museum",
        {"orrelin-localize: 1 text would be lost, such as 'hourz' in "
         "museum/languages/de.json; "}},
    {"UnknownMember", "sed -i '1s/{/{\"note\": \"draft\",/' $de",
        "export museum de", {"'note' in museum/languages/de.json"}},
    {"NoText", "sed -i 's/\"Yatate\"/17/' $de", "export museum",
        {"museum/languages/de.json: the value of 'exhibit-yatate-js-1-title' at "
         "line 42, column 5 is neither a text nor null",
            "1 text would be lost"}},
    {"NoComponents", "rm museum/components.json", "export museum",
        {" texts would be lost", "components.json doesn't describe"}},
    {"EditedSourceOnRename", "cp $translations/en.json museum/languages",
        "rename museum hours h",
        {"orrelin-localize: 2 texts in the default language's file differ from "
         "the project; "}},
    {"CodeThatIsPath", "sed -i 's|\"de\": {|\"../../de\": {|' $project",
        "export museum",
        {"orrelin-localize: '../../de' can't be the code of a language\n"}},
    {"NoLanguageFiles", "rm -r museum/languages", "import museum",
        {"orrelin-localize: there is no museum/languages; 'export' writes it"}},
    {"ImportNoLanguages",
        "sed -i 's/\"languages\": {/\"none\": {/; /defaultLanguage/d' $project",
        "import museum", {"first 'add' the language of its own texts"}},
    {"ExportNoLanguages", "sed -i 's/\"languages\": {/\"none\": {/' $project",
        "export museum", {"the project has no languages yet; "}},
    {"ArchiveOfNoName",
        "$useArchive && sed -i 's|Meridian House Museum|a/b|' $project",
        "export museum", {"name 'a/b' can't be the name of an archive\n"}},
    {"BrokenArchive", "$useArchive && printf PK > \"$archive\"",
        "export museum", {"orrelin-localize: can't read " + Archive}},
    {"ForeignArchive",
        "$useArchive && $host export museum && $host remove museum de",
        "export museum",
        {"75 texts would be lost, such as 'Foyer_Exit-js-1-label' in " +
            Archive + "/de.json; "}}};

TEST(HostTest, Protected) {
    for(const auto& data: Protected) {
        SCOPED_TRACE(data.name);
        const Host host;
        host.shell(data.setup);
        const auto before = host.files();
        const Output output = host.run(data.arguments,
            std::string{"trap '' XFSZ && ulimit -f "} + data.blocks);
        EXPECT_EQ(output.exitCode, 2);
        expectContains(output.err, data.err);
        EXPECT_EQ(host.files(), before);
    }
}

/* What users do and see: transcripts of the shell, in which commands follow
   "$ " */
TEST(HostTest, Sessions) {
    int count = 0;
    for(const auto& file: Fs::directory_iterator{TEST_DATA "/sessions"}) {
        SCOPED_TRACE(file.path());
        const std::string transcript =
            TemporaryFolder::readFile(file.path().string());
        std::istringstream in{transcript};
        std::string script = "session='" + file.path().string() + "'\n";
        std::string line;
        for(int i = 1; std::getline(in, line); ++i) {
            const bool isCommand = line.rfind("$ ", 0) == 0;
            if(isCommand || line[0] == '#')
                script += "sed -n " + std::to_string(i) + "p \"$session\"\n";
            if(isCommand)
                script += line.substr(2) + '\n';
        }
        EXPECT_EQ(Host{}.shell(script), transcript);
        ++count;
    }
    EXPECT_GT(count, 0);
}

/* What the program writes to a terminal */
std::string onTerminal(unsigned short columns, const Host& host,
    const std::vector<const char*>& arguments) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = columns;
    int terminal;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if(child == 0) {
        std::vector<char*> list{const_cast<char*>(HOST_BINARY)};
        for(const char* argument: arguments)
            list.push_back(const_cast<char*>(argument));
        list.push_back(nullptr);
        setenv("TERM", "xterm", 1);
        if(chdir(host.folder.path().data()) == 0)
            execv(HOST_BINARY, list.data());
        _exit(127);
    }
    std::string out;
    char buffer[4096];
    for(ssize_t count; (count = read(terminal, buffer, sizeof(buffer))) > 0;)
        out.append(buffer, std::size_t(count));
    close(terminal);
    waitpid(child, nullptr, 0);
    return out;
}

TEST(HostTest, Terminal) {
    const Host host;
    Fs::copy(TEST_DATA "/wide.json", host.folder.path());
    unsetenv("NO_COLOR");
    expectContains(onTerminal(60, host, {"status", "museum"}),
        {"\033[1mcode\033[0m", "\033[32m100.0 %\033[0m"});

    /* Without one, what is wider is cut only if the environment says so */
    EXPECT_EQ(host.run("terms wide.json").out.find("…"), std::string::npos);
    expectContains(host.run("terms wide.json", "export COLUMNS=44").out,
        {"\na-text-0  yes        日本語      /objects/…\n"});

    setenv("NO_COLOR", "1", 1);
    expectContains(onTerminal(44, host, {"terms", "wide.json"}),
        {"key       translate  text        path\r\n"
         "a-text-0  yes        日本語      /objects/…\r\n"
         "b-text-0  yes        ne\u0301👋        /objects/…\r\n"
         "c-text-0  yes        a\\u001b[3…  /objects/…\r\n"});
    expectContains(onTerminal(120, host, {"status", "museum"}),
        {"100.0 %  ██████████████████████████████\r\n",
            "94.9 %  ████████████████████████████░░\r\n"});
    /* Too narrow for anything */
    expectContains(onTerminal(5, host, {"terms", "wide.json"}), {"日本語"});
    unsetenv("NO_COLOR");
}

}}

#include <chrono>
#include <csignal>
#include <map>
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
       to succeed but those that `fails` is written before. */
    std::string shell(const std::string& commands) const {
        const std::string all = "set -e; cd '" + folder.path() +
            "'; exec > out 2> err; project=museum/project.json; "
            "de=museum/languages/de.json; fr=museum/languages/fr.json; "
            "host='" HOST_BINARY "'; archive='" +
            Archive +
            "'; translations='" EXAMPLES "/museum/translations'; "
            "useArchive='sed -i /Compression/s/false/true/ museum/project.json'"
            "; fails() { if \"$@\" 2>&1; then exit 1; else test $? = 2; fi; }; " +
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

/* Commands on the museum as it comes, which leave it so */
const struct {
    const char *name, *arguments;
    int exitCode;
    std::vector<std::string> out;
    const char* err;
} Commands[]{{"Version", "--version", 0, {"orrelin-localize 1."}, ""},
    {"Help", "--help", 0,
        {"terms ", "status ", "rename ", "languages ", "add ", "remove ",
            "export ", "import "},
        ""},
    {"HelpOfCommand", "export --help", 0,
        {"PROJECT [CODE...]", "--prune",
            "Example:\n  orrelin-localize export museum de fr\n"},
        ""},
    {"NoCommand", "", 1, {},
        "orrelin-localize: a command is required; try --help\n"},
    {"UnknownCommand", "frobnicate museum", 1, {},
        "orrelin-localize: there is no command 'frobnicate'; try --help\n"},
    {"NoProject", "terms", 1, {},
        "orrelin-localize: PROJECT is required; try --help\n"},
    {"NoPercentage", "status museum --fail-under 101", 1, {}, "--fail-under"},

    {"Terms", "terms museum", 0,
        {"hours                                 yes        Open around the "
         "clock.⏎Guided tours at 10:00, 14:00 and 18:00 (UTC).",
            "café-sign-text-0                      no         Café Méridienne  ",
            "\n\n89 terms, 79 to translate\n"},
        ""},
    {"TermsOfFile", "terms museum/project.json --json", 0,
        {"\"key\": \"museum.name\",\n    \"text\": \"Meridian House Museum\","
         "\n    \"path\": \"/settings/project/name\",\n    \"translate\": true",
            "\"text\": null,"},
        ""},
    {"TermsNoScripts", "terms museum --components empty.json", 0,
        {"\n21 terms, 18 to translate\n"}, ""},
    {"NoFile", "terms nowhere", 2, {},
        "orrelin-localize: there is no nowhere\n"},
    {"NoProjectInFolder", "terms .", 2, {},
        "orrelin-localize: the folder . has no project.json\n"},
    {"InvalidProject", "terms broken.json", 2, {},
        "orrelin-localize: can't open broken.json: "},
    {"NoComponents", "terms museum --components no.json", 2, {},
        "orrelin-localize: can't read no.json: No such file or directory\n"},
    {"InvalidComponents", "terms museum --components broken.json", 2, {},
        "orrelin-localize: can't open broken.json: "},
    {"UnknownType", "terms museum --components typo.json", 2, {},
        "orrelin-localize: typo.json: parameter 'label' of 'button' has the "
        "unknown type 'strng'; there are string, bool, int, float, color, "
        "object, asset\n"},

    {"Languages", "languages", 0, {"code", "\nde  ", "\nmi  ", "\nzu  "}, ""},
    {"LanguagesByName", "languages MAORI", 0, {"code  language\nmi    Māori\n"},
        ""},
    {"LanguagesByCode", "languages pt-b --json", 0,
        {"[\n  {\n    \"code\": \"pt-BR\",\n    \"name\": \"Brazilian "
         "Portuguese\"\n  }\n]\n"},
        ""},
    {"LanguagesNone", "languages Grek", 2, {},
        "orrelin-localize: no language has 'Grek' in its code or name; did you "
        "mean el (Greek)"},

    {"Status", "status museum", 0,
        {"en    English (default)          79        0     79  100.0 %  █",
            "de    German                     75        4     79   94.9 %  █",
            "█░\n"},
        ""},
    {"StatusJson", "status museum --json", 0,
        {"\"code\": \"de\",\n    \"name\": \"German\",\n    \"default\": "
         "false,\n    \"translated\": 75,\n    \"missing\": 4,\n    \"total\": "
         "79,\n    \"percent\": 94.9\n"},
        ""},
    {"StatusEnough", "status museum --fail-under 94.9", 0, {}, ""},
    {"StatusTooLittle", "status museum --fail-under 95", 2, {"German"},
        "orrelin-localize: translated to less than 95 %: de (94.9 %)\n"},

    {"AddUnknown", "add museum fr gr", 2, {},
        "orrelin-localize: unknown language code 'gr'; did you mean el (Gree"},
    {"AddInOtherLetters", "add museum PT_br", 2, {},
        "unknown language code 'PT_br'; did you mean pt-BR (Brazilian"},
    {"AddTwice", "add museum fr de", 2, {},
        "orrelin-localize: the project has the language 'de' already\n"},
    {"RemoveMissing", "remove museum french", 2, {},
        "orrelin-localize: the project doesn't have the language 'french'\n"},
    {"RemoveNamed", "remove museum german", 2, {}, "did you mean de (German)?"},
    {"RemoveDefault", "remove museum en", 2, {},
        "orrelin-localize: 'en' is the language of the project's own texts; it "
        "can be removed only as the last one\n"},
    {"RemoveNoFileName", "remove museum ../de", 2, {},
        "orrelin-localize: '../de' can't be the code of a language\n"},
    {"ExportMissing", "export museum fr", 2, {}, "have the language 'fr'"},
    {"Export", "export museum", 0,
        {"en.json     79             0\nde.json     75             4\n",
            "Wrote 2 language files to museum/languages\n"},
        ""},
    {"Import", "import museum", 0,
        {"en    English    79 of 79\nde    German     75 of 79\n",
            "Nothing to change in the project.\n"},
        ""},
    {"RenameMissing", "rename museum nothing x", 2, {},
        "orrelin-localize: the project has no term 'nothing'\n"},
    {"RenameToNothing", "rename museum hours ''", 2, {}, "key is empty\n"},
    {"RenameToOther", "rename museum hours tour.start", 2, {},
        "orrelin-localize: the project has a term 'tour.start' already; "}};

TEST(Host, Commands) {
    for(const auto& data: Commands) {
        SCOPED_TRACE(data.name);
        const Host host;
        host.folder.write("empty.json", "{}");
        host.folder.write("broken.json", "{\"a\": [1, 2}");
        host.folder.write("typo.json", R"({"button": {"label": "strng"}})");
        const auto before = host.files();

        const Output output = host.run(data.arguments);
        EXPECT_EQ(output.exitCode, data.exitCode);
        expectContains(output.out, data.out);
        expectContains(output.err, {data.err});
        EXPECT_EQ(output.err.empty(), data.exitCode == 0);
        /* One line, and no colors where no terminal is */
        EXPECT_EQ(output.err.find('\n') + 1, output.err.size());
        EXPECT_EQ(output.out.find('\033'), std::string::npos);
        EXPECT_EQ(host.files(), before);
    }
}

/* What must fail with not a byte changed on the disk, after what the shell did
   to the museum */
const struct {
    const char *name, *setup, *arguments;
    std::vector<std::string> err;
    /* Of 512 bytes, that a file can't grow beyond, as if the disk were full;
       language files have 6 to 7 kB, the project 38 kB */
    const char* blocks = "unlimited";
} Protected[]{{"FullDiskOnExport", "", "export museum",
                  {"museum/languages/.orrelin-export/en.json"}, "4"},
    {"FullDiskOnRemove", "", "remove museum de",
        {"orrelin-localize: can't write museum/"}, "24"},
    {"FullDiskOnAdd", "", "add museum fr",
        {"orrelin-localize: can't write museum/"}, "24"},
    {"FullDiskOnRename", "", "rename museum hours h",
        {"orrelin-localize: can't write museum/"}, "24"},
    {"FullOutput", "", "terms museum",
        {"orrelin-localize: can't write to the standard output\n"}, "4"},
    {"InvalidJson", "printf '{\"translation\": {' > $de", "export museum",
        {"Invalid JSON in imported file de.json\n",
            "\norrelin-localize: museum/languages/de.json can't be read as a "
            "language file and would be overwritten; "}},
    {"InvalidJsonOnImport", R"(printf '{"translation":\n{"hours" ""}}' > $de)",
        "import museum",
        {"Invalid JSON in imported file de.json\n",
            "\norrelin-localize: can't open museum/languages/de.json: Missing a "
            "colon after a name of object member at line 2, column 10\n"}},
    {"InvalidJsonOnRename", "printf '[]' > $de", "rename museum hours h",
        {"museum/languages/de.json can't be read"}},
    {"InvalidJsonOnStatus", "printf '{}' > $de", "status museum",
        {"Missing or invalid 'translation' object in imported file de.json\n"}},
    {"FileThatIsFolder", "rm $de && mkdir $de", "export museum",
        {"museum/languages/de.json"}},
    {"UnknownTerm", "sed -i 's/\"hours\"/\"hourz\"/' $de", "export museum",
        {"orrelin-localize: 1 text would be lost, such as 'hourz' in "
         "museum/languages/de.json; "}},
    {"UnknownMember", "sed -i '1s/{/{\"note\": \"draft\",/' $de",
        "export museum de", {"'note' in museum/languages/de.json"}},
    {"NoText", "sed -i 's/\"Yatate\"/17/' $de", "export museum",
        {"Invalid type for term exhibit-yatate-js-1-title in imported file "
         "de.json\n",
            "1 text would be lost"}},
    {"NoComponents", "rm museum/components.json", "export museum",
        {" texts would be lost"}},
    {"EditedSourceOnRename", "cp $translations/en.json museum/languages",
        "rename museum hours h",
        {"orrelin-localize: 2 texts in the default language's file differ from "
         "the project; "}},
    {"CodeThatIsPath", "sed -i 's|\"de\": {|\"../../de\": {|' $project",
        "export museum",
        {"orrelin-localize: '../../de' can't be the code of a language\n"}},
    {"NoLanguageFiles", "rm -r museum/languages", "import museum",
        {"orrelin-localize: there is no museum/languages; 'export' writes it"}},
    {"ImportNoLanguages", "sed -i 's/\"languages\": {/\"none\": {/' $project",
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

TEST(Host, Protected) {
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

/* Killed ever later while it saves the project and then the language files */
TEST(Host, Killed) {
    const Host host, renamed;
    const auto before = host.files();
    /* Once for the program to be in memory */
    renamed.shell("$host terms museum");
    const auto begin = std::chrono::steady_clock::now();
    renamed.shell("$host rename museum hours opening");
    const std::chrono::duration<double> duration =
        std::chrono::steady_clock::now() - begin;

    constexpr int count = 60;
    int killed = 0;
    for(int i = 1; i <= count; ++i) {
        host.shell("rm -r museum; cp -r '" EXAMPLES "/museum' .");
        const std::string command = "timeout -s KILL " +
            std::to_string(duration.count() * i * 1.5 / count) +
            " '" HOST_BINARY "' rename '" + host.folder.path("museum") +
            "' hours opening > /dev/null 2>&1";
        const int status = std::system(command.data());
        killed += WIFEXITED(status) && WEXITSTATUS(status) == 128 + SIGKILL;

        for(const char* const name: {"museum/project.json",
                "museum/languages/en.json", "museum/languages/de.json"}) {
            const std::string content = host.folder.read(name);
            EXPECT_TRUE(content == before.at(host.folder.path(name)) ||
                content == renamed.folder.read(name))
                << name << " after " << i;
        }
        host.shell("$host terms museum");
    }
    EXPECT_GT(killed, count / 10);
}

/* What users do, as scripts of the shell, and what has to be printed on the
   way, in this order */
const struct {
    const char *name, *script;
    std::vector<std::string> printed;
} Sessions[]{
    {"WholeLoop", R"(
        $host add museum fr pt-BR fr
        grep -c '"name": "French"' $project
        test ! -e $fr
        cp $de de.json
        $host export museum fr
        grep '"hours"' $fr
        test ! -e museum/languages/pt-BR.json
        cmp de.json $de
        cp $translations/* museum/languages
        cp -r museum before
        $host import museum --dry-run
        diff -r before museum
        $host import museum
        grep -c 'Draws a path on the floor\|"ja": {' $project
        $host status museum/project.json
        fails $host status museum --fail-under 100
        $host remove museum pt-BR
        $host export museum
        diff -r $translations museum/languages)",
        {"Added French (fr)\nAdded Brazilian Portuguese (pt-BR)\nSaved ",
            "\n1\n", "fr.json      0            79\n",
            "Wrote 1 language file to ", "\"hours\": null",
            "en     English                79 of 79  2 texts changed in the "
            "proj",
            "fr     French                 79 of 79\n",
            "pt-BR  Brazilian Portuguese    0 of 79  no file\n",
            "ja     Japanese               79 of 79  added to the project\n",
            "\nfloor-plan-js-2-tooltip\n  from: Draws a line on the floor to "
            "the room you choose.\n  to:   Draws a path on the floor to the "
            "room of your choice.\n",
            "2 changed texts taken back by one undo",
            "2 texts changed in the proj", "Saved museum/project.json\n2\n",
            "orrelin-localize: translated to less than 100 %: pt-BR (0.0 %)\n",
            "Removed the language pt-BR\n"}},
    {"ImportGoesOnAfterErrors", R"(
        cp $translations/en.json museum/languages
        printf { > $de
        printf '{"translation": {}}' > museum/languages/tlh.json
        fails $host import museum
        grep -c 'Draws a path on the floor' $project)",
        {"Invalid JSON in imported file de.json\n",
            "Unknown language code tlh in imported file tlh.json\n",
            "2 texts changed", "0 of 79  not read\n", "\n1\n"}},
    {"ExportReplacesAndPrunes", R"(
        sed -i s/hours/hourz/ $de
        cp $translations/en.json museum/languages
        $host export museum --prune
        test $(grep -c hourz $de) = 0)",
        {"de.json     74             5\n",
            "2 texts in en.json replaced by the project's.\n",
            "1 text dropped, such as 'hourz' in museum/languages/de.json.\n"}},
    {"FirstLanguage", R"(
        rm -r museum/languages
        sed -i 's/"languages":/"none":/' $project
        $host status museum
        $host add museum fr
        $host export museum
        grep tour.start $fr
        $host remove museum fr)",
        {"no languages yet",
            "Added French (fr), the language of the project's own texts\n",
            "\"tour.start\": \"Start the tour\"", "Removed"}},
    /* A file of a language that the project lacks is worth keeping as well */
    {"Rename", R"(
        cp $translations/fr.json museum/languages
        $host rename museum floor-plan-text-0 plan/title
        test $(grep -c floor-plan-text-0 museum/languages/*.json $project |
            grep -vc ':0') = 0
        cd museum
        wc -l languages/en.json languages/de.json languages/fr.json
        grep plan/title languages/en.json languages/de.json languages/fr.json
        grep '"text_term": "plan/title"' project.json
        test $(grep -c '"name": "French"' project.json) = 0
        cd ..
        $host import museum
        grep -c '"name": "French"' $project)",
        {"Renamed 'floor-plan-text-0' to 'plan/title' (1 value) in museum/",
            "Updated 3 language files in museum/languages\n",
            "83 languages/en.json\n", "83 languages/de.json\n",
            "83 languages/fr.json\n", "\"Floor plan\"", "\"Museumsplan\"",
            "\"Plan du musée\"", "\"text_term\": \"plan/title\"",
            "79 of 79  added to the project\n", "Saved museum/project.json\n",
            "1\n"}},
    /* Both values get a key that they share, then another */
    {"RenameOfSeveralValues", R"(
        $host rename museum tour.start welcome.title --merge
        $host rename museum welcome.title welcome
        grep '"welcome"' $de
        $host terms museum)",
        {"(1 value)", "(2 values)", "Willkommen im Haus Meridian",
            "88 terms, 78 to translate"}},
    {"RenameWithoutFiles", R"(
        rm -r museum/languages
        $host rename museum hours opening
        test ! -e museum/languages)",
        {"Renamed 'hours' to 'opening' (1 value) in museum/project.json\n"}},
    /* A text that is missing in the project itself is no translator's fault */
    {"StatusOfDefaultLanguage", R"(
        sed -i '/"text": "Guest book",/d' $project
        $host status museum --fail-under 94
        fails $host status museum --fail-under 99)",
        {"en    English (default)          78        1     79  98.7 %",
            "localize: translated to less than 99 %: de (94.9 %)\n"}},
    {"Remove", R"(
        $host remove museum de
        test ! -e $de
        test $(grep -c '"de": {' $project) = 0)",
        {"Removed the language de\nDeleted museum/languages/de.json\n"
         "Saved museum/project.json\n"}},
    /* Files are exported to another folder than the one with the extension */
    {"FolderWithExtension", R"(
        sed -i '/Folder/s/languages"/texts.old"/' $project
        mkdir museum/texts.old
        mv museum/languages museum/texts
        cp -r museum before
        $host export museum
        $host import museum
        diff -r before museum
        $host remove museum de)",
        {"75 of 79",
            "museum/texts/de.json is there still; 'import' would add"}},
    /* Nothing is in the archive at first, so it starts from the loose files */
    {"Archive", R"(
        $useArchive
        sed s/floor-plan-text-0/plan.title/ museum/languages/en.json > en.json
        $host export museum
        rm museum/languages/*.json
        cp "$archive" archive.zip
        $host status museum
        $host import museum
        $host export museum en
        cmp archive.zip "$archive"
        $host rename museum floor-plan-text-0 plan.title
        $host remove museum de
        sed -i /Compression/s/true/false/ $project
        $host add museum de
        $host export museum
        grep plan.title $de
        sort museum/languages/en.json > sorted
        sort en.json | cmp - sorted)",
        {"de.json     75             4\n",
            "Wrote 2 language files to " + Archive + "\n", "75        4     79",
            "75 of 79", "An archive has the files of all languages.\n",
            Archive + " stays as it is; 'export --prune' writes it without",
            "\"plan.title\": \"Museumsplan\""}},
    {"ArchiveOfNameWithDot", R"(
        $useArchive
        sed -i 's/Meridian House Museum/Museum 2.0/' $project
        $host export museum
        rm $de
        $host export museum)",
        {"de.json     75             4\n", "de.json     75             4\n",
            "museum/languages/Museum 2.zip\n"}}};

TEST(Host, Sessions) {
    for(const auto& data: Sessions) {
        SCOPED_TRACE(data.name);
        const std::string printed = Host{}.shell(data.script);
        std::size_t at = 0;
        for(const std::string& part: data.printed) {
            const std::size_t found = printed.find(part, at);
            EXPECT_NE(found, std::string::npos) << "'" << part << "' not in:\n"
                                                << printed.substr(at);
            at = found == std::string::npos ? at : found;
        }
    }
}

/* Everything that takes other than one column for a character */
const char* const WideProject = R"({"objects": {
    "a": {"components": [{"type": "text", "text": {"text": "日本語"}}]},
    "b": {"components": [{"type": "text", "text": {"text": "ne\u0301👋"}}]},
    "c": {"components": [{"type": "text", "text": {"text": "a\u001b[31m\nb"}}]}
}})";

TEST(Host, Widths) {
    const Host host;
    host.folder.write("wide.json", WideProject);
    EXPECT_EQ(host.shell("$host terms wide.json"),
        "key       translate  text           path\n"
        "a-text-0  yes        日本語         "
        "/objects/a/components/0/text/text\n"
        "b-text-0  yes        ne\u0301👋           "
        "/objects/b/components/0/text/text\n"
        "c-text-0  yes        a\\u001b[31m⏎b  "
        "/objects/c/components/0/text/text\n\n"
        "3 terms, 3 to translate\n");
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

TEST(Host, Terminal) {
    const Host host;
    host.folder.write("wide.json", WideProject);
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

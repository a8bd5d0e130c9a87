#include <csignal>
#include <map>
#include <vector>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <Corrade/Containers/StringStl.h>

#include "TemporaryFolder.h"
#include "storage/Commit.h"
#include "storage/Storage.h"

/* That nothing is lost when a command is killed is checked by
   scripts/check-kills */

namespace OrrelinEngine { namespace Host { namespace {

namespace Fs = std::filesystem;

/* A project with one language, and a folder beside it */
struct Files {
    explicit Files() {
        shell("mkdir -p languages ../outside; echo -n old > project.json; "
              "echo -n de > languages/de.json; "
              "echo -n out > ../outside/out.json");
    }

    void shell(const std::string& commands) const {
        const std::string all = "mkdir -p '" + folder.path("museum") +
            "'; cd '" + folder.path("museum") + "'; " + commands;
        ASSERT_EQ(std::system(all.data()), 0) << commands;
    }

    std::string path(const std::string& name) const {
        return folder.path("museum/" + name);
    }

    std::string start(Storage& storage, bool writes = true) const {
        Containers::String fault = storage.open(path("project.json"));
        if(fault.isEmpty() && writes)
            fault = storage.lock("test", std::chrono::milliseconds{20});
        if(fault.isEmpty())
            fault = storage.setLanguagesFolder(path("languages"));
        return std::string{fault};
    }

    std::string write(
        const std::string& name, const std::string& content) const {
        Storage storage;
        std::string fault = start(storage);
        if(fault.empty())
            fault = std::string{storage.write(path(name), content)};
        return fault.empty() ? std::string{storage.commit()} : fault;
    }

    std::string read(Storage& storage, const std::string& name) const {
        const FileContent out = storage.read(path(name));
        return out.exists ? std::string{out.content}
                          : "-" + std::string{out.fault};
    }

    /* All that would tell of a change */
    std::map<std::string, std::string> state() const {
        std::map<std::string, std::string> out;
        for(const auto& entry:
            Fs::recursive_directory_iterator{folder.path()}) {
            struct stat status;
            lstat(entry.path().c_str(), &status);
            std::string& text = out[entry.path()];
            text = std::to_string(status.st_ino) + " " +
                std::to_string(status.st_mode);
            if(S_ISREG(status.st_mode))
                text += TemporaryFolder::readFile(entry.path()) + " " +
                    std::to_string(status.st_mtim.tv_nsec);
        }
        return out;
    }

    TemporaryFolder folder;
};

void expectRefused(const Files& files, const std::string& fault,
    const std::string& part, const std::map<std::string, std::string>& before) {
    EXPECT_NE(fault.find(part), std::string::npos) << fault;
    EXPECT_EQ(fault.find('\n'), std::string::npos) << fault;
    EXPECT_EQ(files.state(), before);
}

const struct {
    const char *setup, *name, *fault;
} Refused[]{{"chmod 444 languages/de.json", "languages/de.json", "read-only"},
    {"ln -s nothing languages/it.json", "languages/it.json", "isn't there"},
    {"ln -s ../../outside/out.json languages/it.json", "languages/it.json",
        "out of the folders"},
    {"mkfifo languages/it.json", "languages/it.json", "a regular file"},
    {"mkdir languages/it.json", "languages/it.json", "Is a directory"},
    {"true", "../outside/out.json", "isn't in the folder"},
    {"touch .orrelin", "project.json", "can't use the folder"},
    {"ln -s ../outside .orrelin", "project.json", "can't use the folder"},
    {"mkdir .orrelin; ln -s ../../outside/out.json .orrelin/lock",
        "project.json", "isn't from this program"},
    {"mkdir .orrelin; ln ../outside/out.json .orrelin/lock", "project.json",
        "isn't from this program"},
    {"mkdir .orrelin; mkfifo .orrelin/lock", "project.json",
        "isn't from this program"},
    {"mkdir .orrelin; ln -s ../../outside/out.json .orrelin/commit",
        "project.json", "can't read"},
    {"ln -s ../../outside languages/.orrelin", "languages/de.json",
        "can't use the folder"}};

TEST(StorageTest, Refused) {
    for(const auto& row: Refused) {
        SCOPED_TRACE(row.setup);
        const Files files;
        files.shell(row.setup);
        const auto before = files.state();
        expectRefused(files, files.write(row.name, "new"), row.fault, before);
    }
}

TEST(StorageTest, KeepsWhatItCan) {
    const Files files;
    files.shell("mkdir real; mv languages/de.json real; chmod 640 "
                "real/de.json; ln -s ../real/de.json languages/de.json");
    const auto before = files.state();
    EXPECT_EQ(files.write("languages/de.json", "de"), "");
    EXPECT_EQ(files.state(), before);

    EXPECT_EQ(files.write("languages/de.json", "neu"), "");
    EXPECT_TRUE(Fs::is_symlink(files.path("languages/de.json")));
    EXPECT_EQ(files.folder.read("museum/real/de.json"), "neu");
    EXPECT_EQ(
        Fs::status(files.path("real/de.json")).permissions(), Fs::perms{0640});
    EXPECT_EQ(files.state().size(), before.size());
}

/* Somebody else's edits between reading and writing */
TEST(StorageTest, ChangedMeanwhile) {
    const struct {
        const char *edit, *fault;
    } rows[]{
        {"echo -n eu > languages/de.json", "languages/de.json was changed"},
        {"rm languages/de.json", "languages/de.json was changed"},
        {"echo > languages/fr.json", "languages/fr.json was changed"},
        {"echo > languages/it.json", "languages was changed"}};
    for(const auto& row: rows) {
        SCOPED_TRACE(row.edit);
        const Files files;
        std::map<std::string, std::string> before;
        {
            Storage storage;
            ASSERT_EQ(files.start(storage), "");
            std::vector<Containers::String> names;
            storage.list(files.path("languages"), names);
            EXPECT_EQ(files.read(storage, "languages/de.json"), "de");
            EXPECT_EQ(files.read(storage, "languages/fr.json"), "-");
            storage.write(files.path("project.json"), "new");
            EXPECT_EQ(storage.changed(), "");
            files.shell(row.edit);
            EXPECT_NE(storage.changed(), "");
            const std::string fault{storage.commit()};
            EXPECT_NE(fault.find(row.fault), std::string::npos) << fault;
        }
        EXPECT_EQ(files.folder.read("museum/project.json"), "old");
        EXPECT_FALSE(Fs::exists(files.path(".orrelin")));
    }
}

/* Written long enough ago that their times tell of any change */
TEST(StorageTest, Settled) {
    const Files files;
    files.shell("echo -n fr > languages/fr.json; sleep 3");
    const auto before = files.state();
    const auto write = [&](const char* content, const char* edit) {
        Storage storage;
        EXPECT_EQ(files.start(storage), "");
        files.read(storage, "languages/de.json");
        files.read(storage, "languages/fr.json");
        storage.write(files.path("languages/de.json"), "de");
        storage.write(files.path("languages/fr.json"), content);
        files.shell(edit);
        return std::string{storage.commit()};
    };
    EXPECT_NE(write("new", "echo -n it > languages/fr.json")
                  .find("languages/fr.json was changed"),
        std::string::npos);
    EXPECT_EQ(write("new", "true"), "");
    EXPECT_EQ(files.folder.read("museum/languages/fr.json"), "new");
    const std::string de = files.path("languages/de.json");
    EXPECT_EQ(files.state()[de], before.at(de));
}

TEST(StorageTest, NamesTheHolder) {
    const Files files;
    Storage first;
    ASSERT_EQ(files.start(first), "");
    const std::string fault = files.write("project.json", "new");
    EXPECT_EQ(fault.find("the project is in use by 'test' (process " +
                  std::to_string(getpid()) + " on "),
        0)
        << fault;
}

TEST(StorageTest, Signals) {
    const Files files;
    for(const int signal: {SIGINT, SIGQUIT, SIGABRT, SIGPIPE, SIGALRM, SIGUSR1,
            SIGUSR2, SIGXCPU, SIGXFSZ}) {
        const auto interrupted = [&] {
            Storage storage;
            files.start(storage);
            raise(signal);
        };
        EXPECT_EXIT(interrupted(), testing::KilledBySignal(signal), "");
        EXPECT_FALSE(Fs::exists(files.path(".orrelin"))) << signal;
    }
}

/* A command that was killed once its changes held, and what became of it */
const struct {
    const char *name, *before, *edit;
    /* Empty if it's completed */
    const char* fault;
} Left[]{{"de.json", "de", "true", ""},
    {"de.json", "de", "mv .orrelin/*7-0 project.json", ""},
    {"de.json", "de", "echo -n neu > languages/de.json", ""},
    {"de.json", "de", "echo -n mine > languages/de.json",
        "languages/de.json was changed since"},
    {"de.json", "de", "rm languages/de.json",
        "languages/de.json was changed since"},
    {"de.json", "de", "rm languages/.orrelin/*", "new "},
    {"de.json", "de", "echo >> languages/.orrelin/0000000000000007-1",
        "is damaged"},
    {"de.json", "de",
        "cd languages/.orrelin; echo -n neu > ../../x; ln -sf ../../x 0000000000000007-1",
        "is damaged"},
    {"de.json", "de", "sed -i s/de.json/fr.json/ .orrelin/commit",
        "is damaged"},
    {"de.json", "de", "truncate -s 40 .orrelin/commit", "is damaged"},
    {"../../outside/out.json", "out", "true", "is damaged"},
    {"..", "de", "true", "is damaged"}};

TEST(StorageTest, Left) {
    for(const auto& row: Left) {
        SCOPED_TRACE(std::string{row.name} + ": " + row.edit);
        const Files files;
        files.folder.write("museum/.orrelin/commit",
            std::string{toText({7, 0,
                {{"", versionOf("old"), versionOf("new")},
                    {row.name, versionOf(row.before), versionOf("neu")}}})});
        files.shell("mkdir languages/.orrelin; touch .orrelin/archive.zip; "
                    "echo -n new > .orrelin/0000000000000007-0; "
                    "echo -n neu > languages/.orrelin/0000000000000007-1");
        files.shell(row.edit);

        const auto before = files.state();
        const bool isComplete = !*row.fault;
        if(isComplete) {
            Storage reader;
            EXPECT_EQ(files.start(reader, false), "");
            EXPECT_EQ(files.read(reader, "project.json"), "new");
            EXPECT_EQ(files.read(reader, "languages/de.json"), "neu");
            EXPECT_EQ(reader.changed(), "");
            EXPECT_EQ(files.state(), before);
        }
        std::string fault;
        {
            Storage storage;
            fault = files.start(storage);
        }
        if(!isComplete) {
            expectRefused(files, fault, row.fault, before);
            EXPECT_NE(fault.find("emoving the folder"), std::string::npos);
            continue;
        }
        EXPECT_EQ(fault, "");
        EXPECT_EQ(files.folder.read("museum/project.json"), "new");
        EXPECT_EQ(files.folder.read("museum/languages/de.json"), "neu");
        EXPECT_FALSE(Fs::exists(files.path(".orrelin")));
        EXPECT_FALSE(Fs::exists(files.path("languages/.orrelin")));
    }
}

}}}

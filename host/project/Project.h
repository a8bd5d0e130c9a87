#ifndef Orrelin_host_project_Project_h
#define Orrelin_host_project_Project_h

#include <memory>
#include <vector>
#include <Corrade/Containers/String.h>

#include "Tracking/Implementation/languageSources.h"
#include "Tracking/Term.h"
#include "Tracking/TranslationRecord.h"
#include "editor/OrrelinEditor.h"
#include "session/EditorSession.h"
#include "shared/LocalizationData.h"
#include "terminal/Messages.h"

namespace OrrelinEngine { namespace Host {

class Storage;
struct FileContent;

typedef std::vector<Containers::String> Codes;

/* The places that the user named */
struct ProjectOptions {
    /* The project file or the folder with it */
    Containers::String path;
    /* Empty for the file beside the project, if there is one */
    Containers::String components;
    /* MiB that an archive of language files may unpack to, 0 for what its
       project could need */
    unsigned int maxArchive = 0;
};

struct ProjectLanguage {
    Containers::String code;
    Containers::String name;
    bool isDefault;
};

using Tracking::LanguageSource;
using Tracking::Term;

/* A project with its terms. Operations that can fail print why and return
   false. */
class Project {
public:
    explicit Project();
    Project(const Project&) = delete;
    ~Project();
    Project& operator=(const Project&) = delete;

    /* For a command that only reads: opens the project and calls the function
       with it. If another program changed a file meanwhile, does both again,
       and only prints messages of the last time. Returns whether both
       succeeded. */
    template<class F> bool read(const ProjectOptions& options, F&& function);
    bool read(const ProjectOptions& options) {
        return read(options, [](Project&) { return true; });
    }

    /* For a command that writes. Other such commands have to wait until this
       object is gone. */
    bool openForWriting(
        const ProjectOptions& options, Containers::StringView command);

    /* Reads a file. A missing one isn't a failure. */
    bool readFile(Containers::StringView file, FileContent& out);

    /* Whether that failed for a file, or place() for one, which may be fine
       another time */
    bool hasReadFault() const;

    /* Lets the record say where the files are. writeFiles() does that, too. */
    void setRecordedPlace(const LanguageSource& files);

    /* Hand over to commit() the project, and the files of the languages */
    bool write();
    bool writeFiles(const Codes& codes);

    /* The same for the record of the translations */
    bool writeRecord();

    /* Makes all that was written take effect at once, or nothing of it */
    bool commit();

    OrrelinEditor& editor();
    ChangeManager& changeManager();
    LocalizationData& localization();
    TermMap& strings();
    Tracking::TranslationRecord& record();
    Storage& storage();
    const ProjectOptions& options() const;

    /* As the user named it */
    Containers::StringView file() const;

    /* Whether it's one of the files that make up the project itself, which may
       be in the same folder as those of its languages, also as a link */
    bool isOwnFile(Containers::StringView path) const;

    /* Whether a path can be that of a language's file: not of one that is the
       project's own, nor a link to the file of another language. Prints why if
       not. */
    bool checkOwnName(Containers::StringView path);

    /* Code of the language of the project's own texts, valid until the project
       changes */
    Containers::StringView defaultLanguage();

    /* In the order of the project */
    std::vector<ProjectLanguage> languages();

    bool hasLanguage(Containers::StringView code);

    /* The same, but prints an error if the project lacks it */
    bool checkLanguage(Containers::StringView code);

    /* For commands that add languages: the first one of a project becomes that
       of its own texts, whatever the project says. So where there is none yet,
       adds the one that the project names, and puts its code into the list. If
       that can't be done, prints why and returns false. */
    bool provideDefaultLanguage(Codes& added);

    /* The place that exports write, and those that files are read from */
    LanguageSource target();
    std::vector<LanguageSource> sources();

    /* Whether there's something at a path. Where that can't be found out,
       prints a line and returns true, as it isn't taken for missing. */
    bool isThere(const Containers::String& path);

    /* The first of these that has a file, otherwise the target */
    LanguageSource place();

    /* A file at the target that isn't read, as the files were last written to
       another place; empty if there is none */
    Containers::String unreadFile();

    /* A file in the folder of the archive that is read in its place; empty if
       there is none */
    Containers::String unreadLooseFile();

    /* If there's neither a file nor a record, but several archives, prints that
       nobody can know which one is meant, and returns false */
    bool checkArchives();

    /* File of the record beside the language files */
    Containers::String recordFile();

    /* The project's text at a path, a null view if it has none */
    Containers::StringView source(Containers::StringView recordPath);

    /* In the order of their keys, valid until the project or its terms
       change */
    std::vector<Term> terms();

private:
    struct Contents;
    struct State;
    static constexpr int MaxAttempts = 20;

    bool open(const ProjectOptions& options, Containers::StringView command);
    bool findFile();
    bool readComponents();
    bool readProject();
    bool readRecord();

    std::vector<Containers::String> otherArchives();
    Containers::String onlyArchive();
    Containers::String fileIn(const LanguageSource& source);

    bool writeArchive(const Codes& codes, Containers::StringView file);

    /* Whether all files are still as they were read. If not, waits a little, so
       that the other program can finish. */
    bool isCurrent() const;

    std::unique_ptr<State> _state;
};

template<class F>
bool Project::read(const ProjectOptions& options, F&& function) {
    for(int attempt = 0; attempt != MaxAttempts; ++attempt) {
        HeldMessages messages;
        const bool succeeded = open(options, {}) && function(*this);
        if(isCurrent())
            return succeeded;
        messages.drop();
    }
    fail(file() + " is being changed by another program all the time");
    return false;
}

}}

#endif

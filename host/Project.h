#ifndef Orrelin_host_Project_h
#define Orrelin_host_Project_h

#include <vector>
#include <Corrade/Containers/String.h>

#include "session/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace Host {

typedef std::vector<Containers::String> Codes;

/* Where the user says the project is */
struct ProjectOptions {
    /* The project file or the folder with it */
    Containers::String path;
    /* Empty for the file beside the project, if there is one */
    Containers::String components;
};

struct ProjectLanguage {
    Containers::String code;
    Containers::String name;
    bool isDefault;
};

struct Term {
    Containers::StringView key;
    Containers::StringView path;
};

/* A project with its terms. Operations that return false have printed why. */
class Project {
public:
    bool open(const ProjectOptions& options);

    /* Fill the translations from the language files. The project itself stays
       as it is in its file. Errors in the files are passed on. */
    bool readTranslations();

    /* Import the exported language files. Errors in them are passed on. */
    void importFiles();

    /* Whether there were no errors in the language files when they were read */
    bool filesAreFine() const { return _filesAreFine; }

    bool save();

    OrrelinEditor& editor() { return _session.editor(); }
    ChangeManager& changeManager() { return _session.changeManager(); }
    LocalizationData& localization() { return _session.localization(); }
    TermMap& strings() { return _strings; }

    Containers::StringView file() const { return _file; }

    /* Code of the language of the project's own texts, valid until the project
       changes */
    Containers::StringView defaultLanguage();

    /* In the order of the project */
    std::vector<ProjectLanguage> languages();

    bool hasLanguage(Containers::StringView code);

    /* The same, but prints if it doesn't */
    bool checkLanguage(Containers::StringView code);

    /* Whether the language files are in an archive */
    bool isZip();

    /* The folder for language files, as the project has it */
    Containers::String languagesFolder();

    /* The archive or the folder that language files are exported to. The folder
       is the above without what looks like an extension in its name. */
    Containers::String filesPath();

    /* What translations are read from: the above or, if there's nothing, what
       was exported before the project was set to the other. Empty if there's
       nothing either. */
    Containers::String sourcePath();

    /* The text of a term in the project, a null view if there is none */
    Containers::StringView source(Containers::StringView recordPath);

    /* The terms that are to be translated, valid until terms change */
    std::vector<Term> translatedTerms();

    /* How many of them have a translation */
    std::size_t translationCount(
        const std::vector<Term>& terms, Containers::StringView code);

private:
    bool openDocument();
    Containers::String exportFolder();
    Containers::String archivePath();
    void import(Containers::StringView path);

    EditorSession _session;
    Containers::String _file;
    TermMap _strings;
    bool _filesAreFine = true;
};

}}

#endif

#ifndef Orrelin_host_project_ImportReader_h
#define Orrelin_host_project_ImportReader_h

#include "Translations.h"

namespace OrrelinEngine { namespace Host {

/* What an import found in the file of a language */
struct ImportedFile {
    Containers::String code;
    std::size_t translated = 0;
    std::size_t outdated = 0;
    /* Translations that are the source text */
    std::size_t equal = 0;
    /* Of each term */
    std::vector<char> marks;
};

/* Checks the files of an import, describes them in the record and adds the
   languages that the project lacks. Prints what isn't taken, for each file the
   first ones of many. */
class ImportReader: public TextVisitor {
public:
    /* Reads only the files of the given languages, or all if there are none */
    explicit ImportReader(
        Project& project, const LanguageTexts& texts, const Codes& codes):
        _project(project),
        _texts(texts), _codes(codes) {}

    bool isWanted(Containers::StringView code) override;
    bool begin(const LanguageSource& source, const LanguageFile& file,
        const Utility::Json& json) override;
    void add(const LanguageText& text) override;
    void end() override;

    const std::vector<ImportedFile>& files() const { return _files; }
    bool hasFile(Containers::StringView code) const;

    /* Counts translations again after their source texts were taken from the
       file. They weren't made from those, unless it's the first import, before
       which nothing is known about them. */
    void markTaken(const std::vector<SourceDifference>& taken, bool isFirst);

    std::vector<SourceDifference>& differences() { return _differences; }

private:
    bool isTaken(Containers::StringView code) const;
    void warn(const LanguageText& text, Containers::StringView what);
    static void count(ImportedFile& file);
    void warnOfUnknown(const LanguageText& text);

    Project& _project;
    const LanguageTexts& _texts;
    const Codes& _codes;
    std::vector<ImportedFile> _files;
    std::vector<SourceDifference> _differences;

    /* Of the file that is being read */
    Containers::String _path, _code;
    bool _isTaken = false;
    bool _isDefault = false;
    /* The last texts of keys that stand there twice */
    std::map<Containers::String, Containers::String, StrLess> _repeated;
    std::size_t _suggestionCount = 0;
};

}}

#endif

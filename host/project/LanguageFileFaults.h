#ifndef Orrelin_host_project_LanguageFileFaults_h
#define Orrelin_host_project_LanguageFileFaults_h

#include "LanguageFiles.h"

namespace OrrelinEngine { namespace Host {

/* Prints the faults of a language file, with line and column. The parser of the
   import doesn't know places, so the content is read again, but only if there
   is a fault. */
class FaultTeller {
public:
    /* To be made before the file is parsed, which may change the content. The
       file has to live longer. */
    explicit FaultTeller(const LanguageFile& file);

    /* Prints why the file can't be read */
    void tell() const;

    /* Prints the values that are neither texts nor null */
    void tellWrongTypes() const;

private:
    Containers::StringView content() const;

    const LanguageFile& _file;
    /* The content, if parsing will change it; otherwise empty */
    Containers::String _copy;
};

}}

#endif

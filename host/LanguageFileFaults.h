#ifndef Orrelin_host_LanguageFileFaults_h
#define Orrelin_host_LanguageFileFaults_h

#include "LanguageFiles.h"

namespace OrrelinEngine { namespace Host {

/* Prints what is wrong with a language file, with line and column. The content
   is looked at only then. */
class FaultTeller {
public:
    /* Before the file is read, which may change it. It has to stay. */
    explicit FaultTeller(const LanguageFile& file);

    /* Why it can't be read */
    void tell() const;

    /* Which values are neither texts nor null */
    void tellWrongTypes() const;

private:
    Containers::StringView content() const;

    const LanguageFile& _file;
    /* If reading the file will change it */
    Containers::String _copy;
};

}}

#endif

#ifndef Orrelin_benchmark_peers_languageFile_h
#define Orrelin_benchmark_peers_languageFile_h

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>

#include "LargeProject.h"

namespace OrrelinEngine {

/* The language file that the library writes for so many terms */
inline std::string languageFile(std::size_t terms) {
    LargeProject project{terms};
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    LocalizationTools::writeTerms(project.session.editor(), {"en"},
        LocalizationTools::LocalizationFormat::I18next, names, contents);
    return {contents[0].begin(), contents[0].end()};
}

}

#endif

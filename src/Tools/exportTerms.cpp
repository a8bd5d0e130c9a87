#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/languagesFolder.h"
#include "editor/OrrelinEditor.h"
#include "editor/Zip.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

void makeFolder(Containers::StringView path) {
    if(!Utility::Path::exists(path))
        Utility::Path::make(path);
}

}

void exportTerms(
    OrrelinEditor& editor, const Containers::StringIterable& languages) {
    constexpr auto Format = LocalizationFormat::I18next;
    const Containers::String folder = languagesFolder(editor);
    makeFolder(folder);
    if(isZipCompressed(editor))
        exportTermsCompressed(editor, languages, archiveStem(editor), Format);
    else
        exportTerms(editor, languages, folder, Format);
}

void exportTerms(OrrelinEditor& editor,
    const Containers::StringIterable& languages, Containers::StringView path,
    LocalizationFormat format) {
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    writeTerms(editor, languages, format, names, contents);

    const Containers::StringView folder =
        Utility::Path::splitExtension(path).first();
    makeFolder(folder);
    for(std::size_t i = 0; i != names.size(); ++i)
        Utility::Path::write(
            Utility::Path::join({folder, names[i]}), contents[i]);
}

void exportTermsCompressed(OrrelinEditor& editor,
    const Containers::StringIterable& languages, Containers::StringView path,
    LocalizationFormat format) {
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    writeTerms(editor, languages, format, names, contents);

    Containers::Array<Containers::ArrayView<const char>> views{
        Corrade::ValueInit, contents.size()};
    for(std::size_t i = 0; i != contents.size(); ++i)
        views[i] = contents[i];
    const Result result = writeZip(names, views,
        Utility::format("{}.zip", Utility::Path::splitExtension(path).first()));
    if(!result)
        Utility::Error{} << "LocalizationTools::exportTermsCompressed():"
                         << result.error();
}

}}

#ifndef Orrelin_Tools_LocalizationTools_h
#define Orrelin_Tools_LocalizationTools_h

/** @file
 * @brief Namespace @ref OrrelinEngine::LocalizationTools
 */

#include <cstdint>

#include "shared/Export.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine {

/**
@brief Tools for the translatable texts of a project

All of them borrow what the editor owns for the length of one call and keep
nothing of it. They run on the calling thread and take no lock.

@ref gatherStrings() makes terms of the project name, the text of text
components and the string parameters of script components. All other
operations work on the terms as last gathered, and as renamed since.
*/
namespace LocalizationTools {

/** @brief Format of language files */
enum class LocalizationFormat : std::uint32_t {
    /**
     * One JSON file per language for i18next: an object with one member
     * "translation", which is an object of texts by term key
     */
    I18next = 0
};

/**
@brief Gather all terms of a project
@param editor   The editor
@param strings  Where to put the term key of each translatable value, by record
    path

Clears @p strings and @ref LocalizationData::terms and fills both. Translations
stay. Where several values have the same term key, the terms list the first of
them: the project name, then objects in document order with their components
by index.

The document may store a value's key beside it, in a member with the value's
name and "_term" appended. Without that member, the key is made from the
value's place: `projectName`, `<object>-text-<component>` or
`<object>-js-<component>-<parameter>`, with the object's id escaped as in
record paths, see @ref RecordPath.

Takes logarithmic time in the number of terms for each term.
*/
ORRELIN_LOCALIZATION_EXPORT void gatherStrings(
    OrrelinEditor& editor, TermMap& strings);

/**
@brief Gather the terms of one object
@param editor   The editor
@param objectId Object id, escaped as in record paths, see @ref RecordPath
@param strings  Where to add the term keys

Adds them to @p strings and to @ref LocalizationData::terms, and leaves the
entries that are there already as they are.
*/
ORRELIN_LOCALIZATION_EXPORT void gatherObjectStrings(
    OrrelinEditor& editor, Containers::StringView objectId, TermMap& strings);

/**
@brief Gather the terms of one component
@param editor       The editor
@param pathParts    Record path of the component split at each "/", with the
    empty first part kept: empty, "objects", object id, "components", index
@param strings      Where to add the term keys

Adds them to @p strings and to @ref LocalizationData::terms, and leaves the
entries that are there already as they are. Does nothing if there are fewer
than five parts.
*/
ORRELIN_LOCALIZATION_EXPORT void gatherComponentStrings(OrrelinEditor& editor,
    Containers::ArrayView<const Containers::StringView> pathParts,
    TermMap& strings);

/**
@brief Whether a term is to be translated

True if @p term was gathered and the document doesn't exclude its value. To
exclude one, the document stores @cpp false @ce beside it, in a member with the
value's name and "_translate" appended. Anything but a boolean in that member
excludes the value as well.
*/
ORRELIN_LOCALIZATION_EXPORT bool termExists(
    OrrelinEditor& editor, Containers::StringView term);

/**
@brief Rename a term
@param editor   The editor
@param oldName  Key of the term
@param newName  Key that it gets
@param strings  Term keys by record path, as gathered

Moves the translations of all languages along. If another term has the new key
already, both values share it then: that term keeps its path and its
translations, and those of the renamed term are dropped, except in languages
that don't list the other one.

Changes only the tables. The next gathering reads the keys from the document
again, so an editor also stores the new key beside the value.
*/
ORRELIN_LOCALIZATION_EXPORT void renameTerm(OrrelinEditor& editor,
    Containers::StringView oldName, Containers::StringView newName,
    TermMap& strings);

/**
@brief Make the language files of a project
@param editor       The editor
@param languages    Language codes, in the order of the files
@param format       Format of the files
@param fileNames    Where to append the name of each file, the language's code
    with ".json"
@param fileContents Where to append the bytes of each file

Each file lists all terms that are to be translated, by key. The default
language's file has their texts as they are in the project, empty where the
project has none. The other files have the language's translations, null where
one is missing. With an unknown format nothing is appended.

Codes are taken as they are: "../x" gives the name "../x.json".

Looks each term up in the document once, however many languages there are.
*/
ORRELIN_LOCALIZATION_EXPORT void writeTerms(OrrelinEditor& editor,
    const Containers::StringIterable& languages, LocalizationFormat format,
    Containers::Array<Containers::String>& fileNames,
    Containers::Array<Containers::Array<char>>& fileContents);

/**
@brief Export language files as the project's settings say
@param editor       The editor
@param languages    Codes of the languages to export

Writes one file per language into the languages folder or, with zip
compression, one archive there that is named after the project. The folder is
relative to the project root unless it is absolute, and is created if it doesn't
exist. Loose files of other languages stay. An archive holds only the given
languages afterwards, so pass all of the project's.

A term without a translation in the tables is written as null, over the text
that the file may have. So import before the first export.
*/
ORRELIN_LOCALIZATION_EXPORT void exportTerms(
    OrrelinEditor& editor, const Containers::StringIterable& languages);

/**
@brief Export language files into a folder
@param editor       The editor
@param languages    Codes of the languages to export
@param path         The folder; an extension of its name is dropped. Created if
    it doesn't exist.
@param format       Format of the files

A file that can't be written doesn't stop the others. The utility library
prints what the file system reports.

Each file is emptied and then written, so a process that ends meanwhile can
leave it empty or cut off; the archive of @ref exportTermsCompressed() is
replaced as a whole. Codes become names of files as they are, and one such as
"../x" leaves the folder: check codes that come from a stranger's project.
*/
ORRELIN_LOCALIZATION_EXPORT void exportTerms(OrrelinEditor& editor,
    const Containers::StringIterable& languages, Containers::StringView path,
    LocalizationFormat format);

/**
@brief Export language files into a zip archive
@param editor       The editor
@param languages    Codes of the languages to export
@param path         The archive; an extension of its name is replaced by ".zip"
@param format       Format of the files

Replaces an existing archive as a whole, with all of its entries. If the new
one can't be written, prints why and keeps the old one.
*/
ORRELIN_LOCALIZATION_EXPORT void exportTermsCompressed(OrrelinEditor& editor,
    const Containers::StringIterable& languages, Containers::StringView path,
    LocalizationFormat format);

/**
@brief Import language files as the project's settings say

Reads all language files of the languages folder or, if zip compression is on,
those of the archive in it that is named after the project. Prints a warning
and does nothing if the path doesn't exist.

Avoid dots in the names of the folder and of a zipped project, as they make
imports and exports disagree. An export takes the last dot and the rest for
an extension and drops them from either name. An import drops them from the
folder's name only, and only if the path with them exists. So "Demo.final" is
exported to "Demo.zip" and imported from "Demo.final.zip".
*/
ORRELIN_LOCALIZATION_EXPORT void importTerms(OrrelinEditor& editor);

/**
@brief Import the language files of a folder or of a zip archive
@param editor   The editor
@param path     The archive if it ends with ".zip"; a folder otherwise, with an
    extension of its name dropped
@param format   Format of the files

The language of a file is its name without ".json". One that the project lacks
is added with @ref addLanguage(). The file's terms that are to be translated
are set in the language's translations; null means no translation.

Texts in the file of the default language are texts of the project: where they
differ, the project is changed through the change manager, all in one undo
step. A null leaves the project's text as it is, and so does the file of
a language that this import adds. Undo doesn't take back translations and added
languages.

A faulty file or term is printed with the file's name and doesn't stop the
others.
*/
ORRELIN_LOCALIZATION_EXPORT void importTerms(OrrelinEditor& editor,
    Containers::StringView path, LocalizationFormat format);

/**
@brief Add a language to a project
@param editor           The editor
@param languageIndex    Row of @ref AllLanguages; expected to be less than
    @ref AllLanguageCount

Creates the language's record in the project and an entry for each term in its
translations. The first language of a project becomes its default language and
starts with the project's texts, or the editor's default where the project
stores none. Other languages start without translations. Adding a language
again removes its translations.

Writes the project directly; it can't be undone.
*/
ORRELIN_LOCALIZATION_EXPORT void addLanguage(
    OrrelinEditor& editor, unsigned short languageIndex);

/**
@brief Remove a language from a project
@param editor       The editor
@param languageCode Code of the language

Removes the language's record, as a change that can be undone. Without zip
compression, also deletes the language's file from the languages folder; undo
doesn't bring it back. A code with a slash deletes no file. An archive, the
translations in memory and the setting that names the default language stay.
Does nothing if the project doesn't have the language.
*/
ORRELIN_LOCALIZATION_EXPORT void removeLanguage(
    OrrelinEditor& editor, Containers::StringView languageCode);

}

}

#endif

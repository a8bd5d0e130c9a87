#ifndef Orrelin_editor_Zip_h
#define Orrelin_editor_Zip_h

/** @file
 * @brief Function @ref OrrelinEngine::writeZip(), @ref OrrelinEngine::readZip(), class @ref OrrelinEngine::Result
 */

#include <utility>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief Success or the reason of a failure */
class Result {
public:
    /** @brief Success */
    explicit Result() = default;

    /** @brief Failure with a message */
    explicit Result(Containers::String&& error):
        _error{std::move(error)}, _success{false} {}

    /** @brief Whether it is a success */
    explicit operator bool() const { return _success; }

    /**
     * @brief What failed
     *
     * One line without the newline, which names the file. It is valid for as
     * long as the result is. Expects that it is a failure; prints that it isn't
     * to the error output and aborts otherwise.
     */
    Containers::StringView error() const;

private:
    Containers::String _error;
    bool _success = true;
};

/**
@brief Write a zip archive
@param names    Names of the entries, in UTF-8, with slashes between folders
@param contents Contents of the entries, in the same order
@param zipPath  The archive, which is replaced as a whole if it exists

Entries are deflated and in the given order, and the same input always gives the
same bytes; every entry is dated to the beginning of 1980. An entry that is
given again with the same content is written once.

The archive is packed in memory and then put in the place of the old one with
a rename, so that a failure leaves the old one as it was. It fails if
the file can't be written, if there are no entries, if a name is empty, longer
than 65535 bytes or no text in UTF-8, and if one name is given with two
different contents. Expects that there are as many names as contents.
*/
Result writeZip(const Containers::StringIterable& names,
    Containers::ArrayView<const Containers::ArrayView<const char>> contents,
    Containers::StringView zipPath);

/**
@brief Read entries of a zip archive
@param names        Where to add the names of the entries, folders included
@param extensions   Extensions of the entries to read, with their dots
@param contents     Where to append the contents of the entries
@param zipPath      The archive

Entries with one of the extensions, compared byte by byte with what
@relativeref{Corrade,Utility::Path::splitExtension()} tells, are read in the order of
the archive; folders and all other entries are passed over, whatever they
contain. Names that the archive doesn't have in UTF-8 are converted. Two entries
can have the same name.

The archive can come from anybody. It fails if the file is not a regular one or
not an archive, and if one of the entries

-   is damaged: cut, inconsistent or not what its checksum tells,
-   is encrypted or packed in any way but deflated or stored,
-   is larger than it claims to be,
-   brings what is read altogether over 2 GiB.

A failure adds nothing. Memory grows with what has been unpacked, never with
what the archive claims, and nothing is unpacked to the disk. An archive that
admits to be too large is refused before anything is unpacked.
*/
Result readZip(MutableStringArrayView& names,
    const Containers::StringIterable& extensions,
    Containers::Array<Containers::Array<char>>& contents,
    Containers::StringView zipPath);

}

#endif

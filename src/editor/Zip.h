#ifndef Orrelin_editor_Zip_h
#define Orrelin_editor_Zip_h

/** @file
 * @brief Function @ref OrrelinEngine::writeZip(), @ref OrrelinEngine::readZip(), class @ref OrrelinEngine::Result
 */

#include <utility>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief Success, or failure with its reason */
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
     * @brief Reason of the failure
     *
     * One line that names the file, without the newline, valid for as long as
     * the result is. Expects that the result is a failure; prints that it isn't
     * and aborts otherwise.
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
@param zipPath  The archive, replaced as a whole if it exists

Entries are deflated, in the given order, and dated to the beginning of 1980, so
the same input always gives the same bytes. Unpacked, they are files that all
may read and their owner may write. An entry that is given twice with the same
content is written once.

Packs the archive in memory and then puts it in the place of the old one with
a rename, so a failure leaves the old one as it was. Fails if the file can't be
written or is read-only, if there are no entries, if a name is empty, longer
than 65535 bytes, not valid UTF-8 or with a zero byte in it, and if a name is
given with two different contents. Expects as many names as contents; prints
both numbers and aborts otherwise.
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

Reads the entries whose extension, as
@relativeref{Corrade,Utility::Path::splitExtension()} splits it off, equals one
of the given ones byte by byte, in the order of the archive. Folders and all
other entries are passed over, whatever they contain. Names that aren't UTF-8 in
the archive are converted. Two entries can have the same name.

The archive may come from anybody. Reading fails if the file isn't a regular
file, if it isn't an archive, and if one of the entries to read

-   is damaged: cut off, inconsistent or different from its checksum,
-   is encrypted or packed in any way but deflated or stored,
-   is larger or smaller than it claims to be, or claims more than 1032 times
    its packed size, which can't be,
-   shares its bytes with another entry,
-   brings the size of all contents over 2 GiB.

A failure adds nothing. The claims of all entries are checked before anything is
unpacked. Memory for the contents is taken once, in the claimed size: less than
1033 times that of the archive, and 2 GiB at most. Nothing is unpacked to the
disk. Linear in the number of entries and their size.
*/
Result readZip(MutableStringArrayView& names,
    const Containers::StringIterable& extensions,
    Containers::Array<Containers::Array<char>>& contents,
    Containers::StringView zipPath);

}

#endif

#ifndef Corrade_Utility_Path_h
#define Corrade_Utility_Path_h

/** @file
 * @brief Namespace @ref Corrade::Utility::Path
 */

#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Utility {

/**
@brief Filesystem paths and files

Functions that fail print a message with the reason to @ref Error.
*/
namespace Path {

/**
 * @brief Directory and file name
 *
 * Without the slash between them, unless the directory is the root.
 */
Containers::Pair<Containers::StringView, Containers::StringView> split(
    Containers::StringView path);

/** @brief Directory part of @ref split() */
Containers::StringView path(Containers::StringView filename);

/**
 * @brief Path without its extension, and the extension with its dot
 *
 * The extension begins at the last dot of the file name. Dots at the beginning
 * of the file name don't count.
 */
Containers::Pair<Containers::StringView, Containers::StringView> splitExtension(
    Containers::StringView path);

/**
 * @brief Join two paths
 *
 * An absolute @p filename or an empty @p path gives @p filename alone.
 */
Containers::String join(
    Containers::StringView path, Containers::StringView filename);

/** @brief Join several paths, from the first to the last */
Containers::String join(const Containers::StringIterable& paths);

/** @brief Whether a file or a directory exists */
bool exists(Containers::StringView filename);

/** @brief Whether a path is a directory or a link to one */
bool isDirectory(Containers::StringView path);

/** @brief Make a directory with all its parents. It's fine if it exists. */
bool make(Containers::StringView path);

/** @brief Remove a file or an empty directory */
bool remove(Containers::StringView path);

/** @brief Move a file or a directory, replacing the target file */
bool move(Containers::StringView from, Containers::StringView to);

/**
 * @brief Names in a directory
 *
 * With `.` and `..`, in no particular order.
 */
Containers::Optional<Containers::Array<Containers::String>> list(
    Containers::StringView path);

/** @brief File size */
Containers::Optional<std::size_t> size(Containers::StringView filename);

/**
 * @brief Read a whole file
 *
 * Reads to the end even if the system reports another size.
 */
Containers::Optional<Containers::Array<char>> read(
    Containers::StringView filename);

/** @overload */
Containers::Optional<Containers::String> readString(
    Containers::StringView filename);

/**
 * @brief Write a whole file
 *
 * Replaces the contents of the file in place. A failure can leave them
 * incomplete.
 */
bool write(
    Containers::StringView filename, Containers::ArrayView<const void> data);

}

}}

#endif

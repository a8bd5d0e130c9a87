#ifndef Orrelin_editor_ProjectFile_h
#define Orrelin_editor_ProjectFile_h

/** @file
 * @brief Class @ref OrrelinEngine::ProjectFile
 */

#include <Corrade/Containers/Pointer.h>
#include <rapidjson/document.h>

#include "editor/RecordAccess.h"

namespace OrrelinEngine {

class DocumentIndex;

/**
@brief The open project

Holds the project document and is the accessor of its root.

@section ProjectFile-lookup Look-ups

Values are addressed by JSON Pointers with the rules of RapidJSON's
`GenericPointer`. Members of large objects are found through an index, so a
look-up in an object of 500,000 members costs about what it costs in one of 500.
The index only ever proposes where a member may stand: what it says is checked
against the document on each look-up, so @ref document may be edited directly at
any time and a look-up is still right. Names of members are expected to differ;
of those that don't, which JSON allows, the first is found, or any once the
document was edited directly.

The exception in cost is a name that is absent: that it really is can be known
only from searching the object, about a millisecond in a million members. So is
one that moved or came in a direct edit, for the first look-up of it.
@ref EditScope lifts that for edits made in a row.
*/
class ProjectFile: public RecordAccess {
public:
    /** @brief A project with an empty document, an object of no sections */
    explicit ProjectFile();

    ProjectFile(const ProjectFile&) = delete;
    ProjectFile(ProjectFile&&) = delete;
    ~ProjectFile() override;
    ProjectFile& operator=(const ProjectFile&) = delete;
    ProjectFile& operator=(ProjectFile&&) = delete;

    /** @brief Memory pool of the document */
    JsonAllocator& allocator() const override;

    /**
     * @brief Supply defaults for what the document doesn't store
     * @param defaults  A value with the structure of a project document,
     *      referenced, or @cpp nullptr @ce for none
     *
     * Asked last, after the document and the schema of project settings.
     */
    void setDefaults(const JsonValue* defaults) { _defaults = defaults; }

    /**
     * @brief Value at a JSON Pointer
     *
     * @cpp nullptr @ce if there is none or @p pointer isn't one.
     */
    JsonValue* find(Containers::StringView pointer);

    /** @overload */
    const JsonValue* find(Containers::StringView pointer) const;

    /**
     * @brief Value at a JSON Pointer, created if there is none
     *
     * A new value is null. Missing parents are created as objects or, where
     * the segment below is an index, as arrays; what stands in the way as
     * neither is replaced; arrays are filled up with nulls to the index; "-"
     * appends to an array. Expects that @p pointer is valid.
     */
    JsonValue& create(Containers::StringView pointer);

    /**
     * @brief Erase the value at a JSON Pointer
     *
     * What follows in the object or array moves up by one and stays in order.
     * Returns @cpp false @ce if there is no such value. The root can't be
     * erased.
     */
    bool erase(Containers::StringView pointer);

    /**
     * @brief Tell of names that changed in place
     *
     * To be called after an edit of @ref document that look-ups in an
     * @ref EditScope can't notice; see there. No other edit needs it.
     */
    void distrustLookups();

    /** @brief The project document */
    JsonDocument document;

private:
    friend RecordAccess;
    friend class EditScope;

    Containers::Pointer<DocumentIndex> _index;
    const JsonValue* _defaults = nullptr;
};

/**
@brief Promise that the document is edited through its project only

While an instance exists, look-ups through @ref ProjectFile and accessors
believe their index about names that are absent, once they made sure of it by
searching the object some times. The promise is that @ref ProjectFile::document
is edited only with @ref ProjectFile::create(), @ref ProjectFile::erase() and
accessors meanwhile.

Scopes that continue, as those of @ref ChangeManager do, go on believing what
the last such scope made sure of. In between, the document may be edited
directly: that members were added to an object, removed from it or put into
another place shows from their number, where they are in memory and the name of
the last one. An edit that changes names but none of these, such as renaming a
member in place, has to be told with @ref ProjectFile::distrustLookups().
*/
class EditScope {
public:
    /**
     * @brief A scope that believes nothing from before
     * @param place     The project, or any accessor of it
     */
    explicit EditScope(const RecordAccess& place): EditScope{place, false} {}

    /**
     * @brief A scope that continues the last one
     *
     * Believes nothing from before if that one didn't continue.
     */
    static EditScope continued(const RecordAccess& place) {
        return EditScope{place, true};
    }

    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;
    ~EditScope();

private:
    explicit EditScope(const RecordAccess& place, bool continues);

    DocumentIndex& _index;
};

}

#endif

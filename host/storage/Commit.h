#ifndef Orrelin_host_storage_Commit_h
#define Orrelin_host_storage_Commit_h

#include <map>

#include "CommitRecord.h"
#include "ProjectFolders.h"

namespace OrrelinEngine { namespace Host {

/* The record is written under the first name. Under the second one, it holds. */
constexpr const char* NewRecordName = "commit.new";
constexpr const char* RecordName = "commit";

/* Makes the changes of a record, in these steps. Each returns why it failed.

    stage()    new contents are on the disk, aside
    publish()  from here on they hold: whoever comes next reads them, and
               completes what is left
    apply()    they are in the place of the files
    clean()    there's nothing aside anymore

   A single change has no need of being published: it's there as soon as it's
   in its place. */
class Commit {
public:
    /* The folder is the hidden one of the project. Both have to live longer. */
    explicit Commit(const ProjectFolders& folders, const Descriptor& hidden,
        CommitRecord record);

    /* With the new contents by their keys */
    Containers::String stage(
        const std::map<Containers::String, Containers::String>& contents);
    Containers::String publish();
    bool isPublished() const { return _isPublished; }
    Containers::String apply();
    Containers::String clean();

    /* Whether a record that a killed command left can be applied. Somebody may
       have written the files since, or the record may not be of this
       program. */
    Containers::String checkLeft();

private:
    Containers::String enter(const Containers::String& key);
    Containers::String openStaging();
    Containers::String leave();
    Containers::String makeLanguagesFolder();
    void removeMadeFolders();
    Containers::String writeRecord();
    Containers::String stageFile(
        const FileChange& change, const Containers::String& content);
    bool keepOwner(int file) const;
    bool applyChange(const FileChange& change);
    Containers::String checkChange(const FileChange& change, bool& isApplied);

    const ProjectFolders& _folders;
    const Descriptor& _hidden;
    CommitRecord _record;
    bool _isPublished = false;
    /* Changes of a record that was left may have been made already */
    std::vector<bool> _isApplied;

    /* Where the current file is, and the open folders of it */
    Containers::String _path;
    Containers::String _name;
    Descriptor _folder, _staging;
};

/* Removes what killed commands left before they held: of this project in all
   folders that are known, and what the record beside the lock tells of */
void removeLeftovers(const ProjectFolders& folders, const Descriptor& hidden);

/* Removes the staged files with a prefix from a folder's hidden folder, and
   that one if nothing else is in it */
void sweep(const Containers::String& path, const Containers::String& prefix);

}}

#endif

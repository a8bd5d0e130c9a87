#ifndef Orrelin_host_storage_Commit_h
#define Orrelin_host_storage_Commit_h

#include <map>

#include "CommitRecord.h"
#include "ProjectFolders.h"

namespace OrrelinEngine { namespace Host {

/* The record is written under the first name and takes effect when it's renamed
   to the second */
constexpr const char* NewRecordName = "commit.new";
constexpr const char* RecordName = "commit";

/* In the hidden folder of the project, where only the command with the lock
   writes one. As the name isn't made of where the project is, it's still found
   in a folder that was moved. */
constexpr const char* ArchiveName = "archive.zip";

/* Makes the changes of a record, in these steps. Each returns why it failed.

    stage()    writes the new contents to the disk, beside the files
    publish()  makes them take effect: from here on, other commands read them
               and the next one that writes completes the steps below
    apply()    moves them to the place of the files
    clean()    removes what else was made

   A single change isn't published, as moving it makes it take effect. */
class Commit {
public:
    /* Takes the hidden folder of the project. The folders have to live
       longer. */
    explicit Commit(const ProjectFolders& folders, const Descriptor& hidden,
        CommitRecord record);

    /* Takes the new contents by their keys */
    Containers::String stage(
        const std::map<Containers::String, Containers::String>& contents);
    Containers::String publish();
    bool isPublished() const { return _isPublished; }
    Containers::String apply();
    Containers::String clean();

    /* Checks whether a record that a killed command left can be applied.
       Somebody may have written the files since, or another program may have
       made the record. */
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
    /* For a record that a killed command left: which changes it made */
    std::vector<bool> _isApplied;

    /* Real folder and name of the current file, the folder opened, and the
       hidden folder in it */
    Containers::String _path;
    Containers::String _name;
    Descriptor _folder, _staging;
};

/* Removes what killed commands left apart from changes that took effect: in the
   folders of the project and in those that the record names */
void removeLeftovers(const ProjectFolders& folders, const Descriptor& hidden);

/* Removes the files with a prefix from a folder's hidden folder, and the
   hidden folder if it's empty then */
void sweep(const Containers::String& path, const Containers::String& prefix);

}}

#endif

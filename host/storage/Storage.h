#ifndef Orrelin_host_storage_Storage_h
#define Orrelin_host_storage_Storage_h

#include <chrono>
#include <map>
#include <memory>

#include "CommitRecord.h"
#include "ProjectFolders.h"
#include "ProjectLock.h"
#include "Signals.h"
#include "Snapshot.h"

namespace OrrelinEngine { namespace Host {

/* All that a command reads and writes on the disk. A command that only reads:

    Storage storage;
    storage.open(file)
    storage.read(file)                  and open the project from the content
    storage.setLanguagesFolder(folder)  which the project names
    storage.read(...), storage.list(...)
    storage.changed()                   if it names a file, start again

   One that writes:

    Storage storage;
    storage.open(file)
    storage.lock("export")
    storage.read(file)
    storage.setLanguagesFolder(folder)  completes a killed command's commit
    storage.read(...), storage.list(...)
    storage.write(...), storage.remove(...)
    storage.commit()

   Every command makes the calls up to setLanguagesFolder(). Operations return
   a fault in one line that names the user's file, or an empty string. They
   print nothing.

   The promises: A commit makes all of its changes or none, even if the process
   is killed or the power fails. It doesn't write over anything that somebody
   else wrote since it was read. Two commands that write the same project do it
   one after the other. Reading needs no lock and no right to write. If
   changed() is empty then, the command has read either all or none of a commit.
   In the end, and after a signal, nothing is left beside the files.

   A link stays, and the file that it leads to is written. Files keep their
   permissions and, where that's allowed, their owner. */
class Storage {
public:
    explicit Storage() = default;
    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;
    /* Releases the lock. Drops all that wasn't committed. */
    ~Storage();

    /* Finds the folder of a project file, and a commit in it that a killed
       command left. Its files are read as if it were complete. */
    Containers::String open(Containers::StringView projectFile);

    /* Waits until no other command writes the project. After the given time,
       fails and names that command. */
    Containers::String lock(Containers::StringView command,
        std::chrono::milliseconds wait = std::chrono::seconds{10});

    /* Sets the folder of the language files, which doesn't need to exist. With
       the lock, completes or drops what a killed command left. */
    Containers::String setLanguagesFolder(Containers::StringView folder);

    /* Reads any regular file. A missing one has neither content nor fault. */
    FileContent read(Containers::StringView file);

    /* Finds where the content of a file is now, for functions that read files
       themselves. The path of an archive keeps its extension. If the returned
       fault is empty, the content can be read. */
    Containers::String find(
        Containers::StringView file, Containers::String& path);

    /* Names in a folder, sorted, without hidden ones. A missing folder has
       none. */
    Containers::String list(const Containers::String& folder,
        std::vector<Containers::String>& names);

    /* A file or folder that changed since it was read, or the project file if
       a commit came in between; empty if nothing did. To be asked after
       a fault, too, as such a change may be its cause. */
    Containers::String changed() const { return _snapshot.changed(); }

    /* Make commit() write or remove a file: the project file or one in the
       folder of the languages, under the path that it was read by. */
    Containers::String write(
        Containers::StringView file, Containers::String content);
    Containers::String remove(Containers::StringView file);

    /* The same for functions that write archives themselves: have them write to
       the first, then call the second. Signals wait from here on until the
       storage is gone, so that nothing of the archive is left behind. */
    Containers::String archivePath();
    Containers::String writeArchive(Containers::StringView file);

    /* Doesn't touch files that have the content already. Fails without a change
       if a file was changed since it was read, is read-only or is a link that
       leads nowhere or out of the folders. On a failure after the changes have
       taken effect, the line says that the next command that writes completes
       them. */
    Containers::String commit();

private:
    Containers::String loadRecord();
    Containers::String recover();
    FileContent readPending(const FileChange& change,
        Containers::StringView file, Containers::String& path);
    FileContent readAt(Containers::StringView file, Containers::String& path);
    Containers::String put(
        Containers::StringView file, Containers::String content, bool exists);
    Containers::String prepare(CommitRecord& record);
    Containers::String prepareChange(const Containers::String& key,
        const Version& after, CommitRecord& record);
    Containers::String carryOut(const CommitRecord& record);

    ProjectFolders _folders;
    Snapshot _snapshot;
    /* The commit that a killed command left */
    Containers::Optional<CommitRecord> _pending;
    /* By key: what commit() writes */
    std::map<Containers::String, Containers::String> _contents;
    std::map<Containers::String, Version> _versions;
    std::unique_ptr<SignalBlock> _block;
    ProjectLock _lock;
};

}}

#endif

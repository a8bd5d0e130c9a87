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
    storage.changed()                   start anew if it names a file

   One that writes:

    Storage storage;
    storage.open(file)
    storage.lock("export")
    storage.read(file)
    storage.setLanguagesFolder(folder)  completes what a killed command left
    storage.read(...), storage.list(...)
    storage.write(...), storage.remove(...)
    storage.commit()

   Every command goes that way up to setLanguagesFolder(). Operations return
   what is wrong in one line that names the user's file, or an empty string.
   Nothing is printed.

   What is promised: A commit makes all of its changes or none, whenever the
   process is killed or the power fails. Nothing that somebody else wrote
   between reading and the commit is written over. Two commands that write the
   same project do it one after the other. Reading needs no lock and no right to
   write, and finds a commit as a whole once changed() is empty. In the end, and
   after a signal, nothing is left beside the files.

   A link stays one, and what it leads to is written; permissions and, where
   that's allowed, the owner are kept. */
class Storage {
public:
    explicit Storage() = default;
    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;
    /* Gives the lock back. What wasn't committed is dropped. */
    ~Storage();

    /* Finds the folder of a project file, and a commit in it that was left
       incomplete: it's read as if it were complete. */
    Containers::String open(Containers::StringView projectFile);

    /* Waits until no other command writes the project. If there's one after
       that time, it's named. */
    Containers::String lock(Containers::StringView command,
        std::chrono::milliseconds wait = std::chrono::seconds{10});

    /* The folder of the language files, which doesn't need to exist. With the
       lock, completes or drops what a killed command left. */
    Containers::String setLanguagesFolder(Containers::StringView folder);

    /* Any regular file. One that is missing has neither content nor fault. */
    FileContent read(Containers::StringView file);

    /* Where the content of a file is now, for functions that read files
       themselves. It has the file's extension. The content was checked if the
       returned fault is empty. */
    Containers::String find(
        Containers::StringView file, Containers::String& path);

    /* Names in a folder, sorted, without hidden ones. A missing folder has
       none. */
    Containers::String list(const Containers::String& folder,
        std::vector<Containers::String>& names);

    /* A file or folder that isn't anymore as it was read, or a commit that came
       in between; empty if there's none. To be asked after a fault, too. */
    Containers::String changed() const { return _snapshot.changed(); }

    /* What commit() is to write: the project file or one in the folder of the
       languages, by the path that it was read by. */
    Containers::String write(
        Containers::StringView file, Containers::String content);
    Containers::String remove(Containers::StringView file);

    /* The same for functions that write archives themselves: they are given
       this path, and what is there then is taken for the file. Signals wait
       from here on until the storage is gone. */
    Containers::String archivePath();
    Containers::String writeArchive(Containers::StringView file);

    /* Files that have the content already aren't touched. Refused, without a
       change, if a file was changed since it was read, is read-only or is a
       link that leads nowhere or out of the folders. If it fails once the
       changes hold, the line says so, and the next command completes them. */
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
    /* Of a commit that isn't complete */
    Containers::Optional<CommitRecord> _pending;
    /* To be committed, by the keys */
    std::map<Containers::String, Containers::String> _contents;
    std::map<Containers::String, Version> _versions;
    std::unique_ptr<SignalBlock> _block;
    ProjectLock _lock;
};

}}

#endif

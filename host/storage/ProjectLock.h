#ifndef Orrelin_host_storage_ProjectLock_h
#define Orrelin_host_storage_ProjectLock_h

#include <chrono>
#include <Corrade/Containers/String.h>

#include "Descriptor.h"
#include "ProjectFolders.h"

namespace OrrelinEngine { namespace Host {

constexpr const char* LockName = "lock";

/* Keeps two commands from writing the same project. The system holds the lock
   for an open file, and so releases it however the process ends. While the lock
   is held, a signal that ends the process also removes the lock's file. */
class ProjectLock {
public:
    explicit ProjectLock() = default;
    ProjectLock(const ProjectLock&) = delete;
    /* Removes the lock's file, and its folder if that is empty then */
    ~ProjectLock();
    ProjectLock& operator=(const ProjectLock&) = delete;

    /* Waits until the lock is free, but not longer than given. Returns why it
       can't be had, with the command that has it. The folders have to live
       longer. */
    Containers::String acquire(const ProjectFolders& folders,
        Containers::StringView command, std::chrono::milliseconds wait);

    bool isHeld() const { return bool(_file); }

    /* The hidden folder with the lock */
    const Descriptor& folder() const { return _folder; }

private:
    enum class Attempt { Held, Busy, Gone, Failed };

    Attempt attempt(const ProjectFolders& folders, Containers::String& fault);
    Attempt open(const ProjectFolders& folders, Containers::String& fault);
    bool lockRealFolder(const ProjectFolders& folders);
    Containers::String holder() const;
    void sign(Containers::StringView command) const;

    const Descriptor* _parent = nullptr;
    Descriptor _folder;
    Descriptor _file;
    /* Of the project file, if that's a link */
    Descriptor _realFolder;
};

}}

#endif

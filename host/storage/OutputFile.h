#ifndef Orrelin_host_storage_OutputFile_h
#define Orrelin_host_storage_OutputFile_h

#include <string>
#include <Corrade/Containers/String.h>

#include "Descriptor.h"
#include "Signals.h"

namespace OrrelinEngine { namespace Host {

/* A file that isn't one of a project, for the user to pass on. It's written
   beside its place, so that it has the old or the new content at any moment.
   Signals wait while it exists, so that nothing else is left. */
class OutputFile {
public:
    /* What is there already is only replaced if that's allowed; a link or what
       isn't a regular file never is. */
    explicit OutputFile(const Containers::String& path, bool mayReplace);
    OutputFile(const OutputFile&) = delete;
    ~OutputFile();
    OutputFile& operator=(const OutputFile&) = delete;

    /* Writes once it's many bytes */
    std::string& buffer() { return _buffer; }
    void flushIfFull() {
        if(_buffer.size() > FlushSize)
            flush();
    }

    /* Waits until all is on the disk */
    void finish();

    /* Moves it to its place */
    void publish();

    /* Why the first thing failed that did; nothing happened after that. Empty
       if all succeeded. */
    const Containers::String& fault() const { return _fault; }

private:
    static constexpr std::size_t FlushSize = 1 << 18;

    void flush();
    void setFault();

    SignalBlock _block;
    Containers::String _path, _temporary;
    bool _mayReplace;
    Descriptor _file;
    std::string _buffer;
    Containers::String _fault;
};

}}

#endif

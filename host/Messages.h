#ifndef Orrelin_host_Messages_h
#define Orrelin_host_Messages_h

#include <ostream>
#include <streambuf>
#include <string>
#include <vector>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* What the program exits with */
enum : int { Success = 0, UsageError = 1, Failure = 2 };

/* Prints an error as one line, after what was printed to the standard output.
   Returns Failure for the caller to pass on. */
int fail(Containers::StringView message);

/* The same with a line that an operation printed, without the operation's
   name, which means nothing to the user */
int failWithoutName(Containers::StringView line);

/* Lines for the standard error output. A stranger's file can have any number of
   faults of any length, so only the first ones are kept, and of each only the
   beginning. */
class Lines {
public:
    static constexpr std::size_t MaxCount = 20;
    static constexpr std::size_t MaxSize = 2000;

    void add(std::string&& line);
    void print() const;

    bool isEmpty() const { return _first.empty(); }
    Containers::StringView front() const;

private:
    std::vector<std::string> _first;
    std::size_t _count = 0;
};

/* Where the outputs of the utility library can be redirected to. Each message
   is one line, whatever is in it. */
class LineBuffer: public std::streambuf {
public:
    explicit LineBuffer(Lines& lines): _lines(lines) {}

    /* Whether nothing came */
    bool isEmpty() const { return _isEmpty; }

private:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

    Lines& _lines;
    std::string _line;
    bool _isEmpty = true;
};

/* Keeps messages back for as long as it exists, and then prints them */
class HeldMessages {
public:
    explicit HeldMessages();
    HeldMessages(const HeldMessages&) = delete;
    ~HeldMessages();
    HeldMessages& operator=(const HeldMessages&) = delete;

    /* They don't hold anymore */
    void drop();
};

/* Calls the function. The errors and warnings it prints are passed on as they
   are; returns whether there were no errors. */
template<class F> bool succeeds(F&& function) {
    Lines lines;
    LineBuffer errors{lines}, warnings{lines};
    std::ostream errorStream{&errors}, warningStream{&warnings};
    {
        Utility::Error redirectErrors{&errorStream};
        Utility::Warning redirectWarnings{&warningStream};
        function();
    }
    lines.print();
    return errors.isEmpty();
}

/* Calls the function. If it returns false, the first line that it printed
   becomes an error of this program's own. */
template<class F> bool succeedsOrFails(F&& function) {
    Lines lines;
    LineBuffer buffer{lines};
    std::ostream stream{&buffer};
    bool succeeded;
    {
        Utility::Error redirect{&stream};
        succeeded = function();
    }
    if(!succeeded)
        failWithoutName(lines.front());
    return succeeded;
}

}}

#endif

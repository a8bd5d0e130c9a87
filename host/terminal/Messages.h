#ifndef Orrelin_host_terminal_Messages_h
#define Orrelin_host_terminal_Messages_h

#include <ostream>
#include <streambuf>
#include <string>
#include <vector>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* Exit codes of the program */
enum : int {
    Success = 0,
    UsageError = 1,
    Failure = 2,
    GateFailure = 3,
    /* The same text was changed in the project and in a file */
    Conflict = 4
};

/* Prints an error as one line. Flushes the standard output first, so that both
   come in order. Returns Failure for the caller to pass on. */
int fail(Containers::StringView message);

/* The same with a line that an operation printed, without the operation's
   name, which means nothing to the user */
int failWithoutName(Containers::StringView line);

/* Lines for the standard error output. Keeps only the first ones, and only the
   beginning of each, as a stranger's file can have any number of faults of any
   length. */
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

/* A target for redirected outputs of the utility library. Makes one line of
   each message, whatever it holds. */
class LineBuffer: public std::streambuf {
public:
    explicit LineBuffer(Lines& lines): _lines(lines) {}

    /* Whether no message came */
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

    /* Forgets the messages so far */
    void drop();
};

/* While it exists, no messages are printed, as they will be another time */
class NoMessages {
public:
    explicit NoMessages();
    NoMessages(const NoMessages&) = delete;
    ~NoMessages();
    NoMessages& operator=(const NoMessages&) = delete;
};

/* While it exists, only the first messages are printed, and then how many more
   there were. Strangers' files can have any number of faults. */
class MessageLimit {
public:
    explicit MessageLimit();
    MessageLimit(const MessageLimit&) = delete;
    ~MessageLimit();
    MessageLimit& operator=(const MessageLimit&) = delete;

    /* Whether another message won't be printed */
    static bool isReached();
};

/* Calls the function and passes on the errors and warnings that it prints.
   Returns whether there were no errors. */
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

/* Calls the function. If it returns false, prints the first line of its output
   as an error of this program. */
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

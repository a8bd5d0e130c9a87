#include "Messages.h"

#include <algorithm>
#include <cstdio>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

bool areMessagesHeld = false;
bool areMessagesSilent = false;
std::string heldMessages;

void put(Containers::StringView text) {
    std::fflush(stdout);
    std::fwrite(text.data(), 1, text.size(), stderr);
}

/* Counted while they are limited */
bool areMessagesLimited = false;
std::size_t messageCount = 0;

void printError(Containers::StringView text) {
    if(areMessagesSilent)
        return;
    if(areMessagesLimited && ++messageCount > Lines::MaxCount)
        return;
    const Containers::String line =
        oneLine(text.prefix(std::min(text.size(), Lines::MaxSize))) +
        (text.size() > Lines::MaxSize ? "…\n" : "\n");
    if(areMessagesHeld)
        heldMessages += std::string{line};
    else
        put(line);
}

}

int fail(Containers::StringView message) {
    printError("orrelin-localize: " + message);
    return Failure;
}

int failWithoutName(Containers::StringView line) {
    return fail(line.partition(' ')[2].trimmed());
}

HeldMessages::HeldMessages() {
    areMessagesHeld = true;
}

HeldMessages::~HeldMessages() {
    put(heldMessages);
    drop();
    areMessagesHeld = false;
}

void HeldMessages::drop() {
    heldMessages.clear();
}

NoMessages::NoMessages() {
    areMessagesSilent = true;
}

NoMessages::~NoMessages() {
    areMessagesSilent = false;
}

MessageLimit::MessageLimit() {
    areMessagesLimited = true;
    messageCount = 0;
}

MessageLimit::~MessageLimit() {
    areMessagesLimited = false;
    if(messageCount > Lines::MaxCount)
        printError(
            Utility::format("and {} more", messageCount - Lines::MaxCount));
}

bool MessageLimit::isReached() {
    return areMessagesLimited && messageCount >= Lines::MaxCount;
}

void Lines::add(std::string&& line) {
    if(++_count <= MaxCount)
        _first.push_back(std::move(line));
}

void Lines::print() const {
    for(const std::string& line: _first)
        printError(line);
    if(_count > MaxCount)
        printError(Utility::format("and {} more", _count - MaxCount));
}

Containers::StringView Lines::front() const {
    if(_first.empty())
        return {};
    return _first.front();
}

LineBuffer::int_type LineBuffer::overflow(int_type c) {
    const char character = traits_type::to_char_type(c);
    if(!traits_type::eq_int_type(c, traits_type::eof()))
        xsputn(&character, 1);
    return traits_type::not_eof(c);
}

std::streamsize LineBuffer::xsputn(const char* text, std::streamsize size) {
    _line.append(text,
        std::min(std::size_t(size),
            Lines::MaxSize + 1 - std::min(_line.size(), Lines::MaxSize + 1)));
    return size;
}

/* Called once at the end of each message. Line breaks before that are in a
   text that's part of it. */
int LineBuffer::sync() {
    if(!_line.empty() && _line.back() == '\n')
        _line.pop_back();
    if(!_line.empty()) {
        _lines.add(std::move(_line));
        _isEmpty = false;
    }
    _line.clear();
    return 0;
}

}}

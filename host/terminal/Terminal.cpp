#include "Terminal.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

namespace OrrelinEngine { namespace Host {

namespace {

constexpr wchar_t Replacement = 0xfffd;

/* Fits the int of a width */
constexpr std::size_t AnyCount = std::size_t{1} << 30;

Terminal detect() {
    const char* const columns = std::getenv("COLUMNS");
    const long width = columns ? std::strtol(columns, nullptr, 10) : 0;
    Terminal out{width > 0, false, width > 0 ? std::size_t(width) : 80};
    if(!::isatty(STDOUT_FILENO))
        return out;
    out.isNarrow = true;
    winsize size{};
    if(::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col)
        out.width = size.ws_col;
    const char* const noColor = std::getenv("NO_COLOR");
    const char* const type = std::getenv("TERM");
    out.isColored = !(noColor && *noColor) && type &&
        Containers::StringView{type} != "dumb";
    return out;
}

bool isPlain(char c) {
    return c >= ' ' && c <= '~';
}

/* Without an early exit, which lets the compiler check many at a time */
bool isPlain(Containers::StringView text) {
    bool out = true;
    for(const char c: text)
        out = out & isPlain(c);
    return out;
}

/* Calls the function with the bytes, the code point and the width of each
   character; the width is negative if it can't be shown. Plain characters come
   together, up to the given count, as asking the system for each of them would
   take most of the time. */
template<class F> void forEachCharacter(
    Containers::StringView text, std::size_t plainCount, F&& each) {
    static const bool isUtf8 = std::setlocale(LC_CTYPE, "C.UTF-8");
    static_cast<void>(isUtf8);

    const char* at = text.begin();
    while(at != text.end()) {
        const std::size_t left = std::size_t(text.end() - at);
        const char* const plainEnd = std::find_if_not(at,
            at + std::min(left, plainCount), [](char c) { return isPlain(c); });
        if(plainEnd != at) {
            const std::size_t count = std::size_t(plainEnd - at);
            each(Containers::StringView{at, count}, wchar_t(*at), int(count));
            at = plainEnd;
            continue;
        }
        wchar_t character = 0;
        std::mbstate_t state{};
        std::size_t size = std::mbrtowc(&character, at, left, &state);
        if(size > left) {
            size = 1;
            character = Replacement;
        } else if(size == 0)
            size = 1;
        each(Containers::StringView{at, size}, character,
            character ? ::wcwidth(character) : -1);
        at += size;
    }
}

/* Controls, and what changes the direction of the text around it or can't be
   seen at all */
bool isDangerous(wchar_t character, int width) {
    return width < 0 || character == 0x61c || character == 0x200e ||
        character == 0x200f || (character >= 0x2028 && character <= 0x202e) ||
        (character >= 0x2066 && character <= 0x206f) || character == 0xfeff ||
        (character >= 0xe0000 && character <= 0xe007f);
}

void appendEscape(std::string& out, wchar_t character) {
    const auto append = [&](unsigned int unit) {
        out += std::string{Utility::format("\\u{:.4x}", unit)};
    };
    const unsigned int code = static_cast<unsigned int>(character);
    if(code < 0x10000)
        append(code);
    else {
        append(0xd800 + ((code - 0x10000) >> 10));
        append(0xdc00 + ((code - 0x10000) & 0x3ff));
    }
}

void appendEscaped(
    std::string& out, Containers::StringView text, bool joinLines) {
    if(isPlain(text)) {
        out.append(text.data(), text.size());
        return;
    }
    forEachCharacter(text, AnyCount,
        [&](Containers::StringView bytes, wchar_t character, int width) {
            if(character == '\n')
                out += joinLines ? "⏎" : "\n";
            else if(character == Replacement)
                out += "\xef\xbf\xbd";
            else if(isDangerous(character, width))
                appendEscape(out, character);
            else
                out.append(bytes.data(), bytes.size());
        });
}

void print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}

const Terminal& terminal() {
    static const Terminal out = detect();
    return out;
}

std::size_t displayWidth(Containers::StringView text) {
    if(isPlain(text))
        return text.size();
    std::size_t out = 0;
    forEachCharacter(
        text, AnyCount, [&](Containers::StringView, wchar_t, int width) {
            out += width > 0 ? std::size_t(width) : 0;
        });
    return out;
}

Containers::String oneLine(Containers::String text) {
    if(isPlain(text))
        return text;
    std::string out;
    appendEscaped(out, text, true);
    return out;
}

Containers::String shortened(Containers::StringView text, std::size_t width) {
    /* The shortest character of two columns has three bytes, so a text of few
       bytes fits for sure */
    if(text.size() <= width || displayWidth(text) <= width)
        return text;
    std::size_t used = 0;
    std::size_t end = 0;
    bool isFull = width == 0;
    forEachCharacter(
        text, 1, [&](Containers::StringView bytes, wchar_t, int columns) {
            used += columns > 0 ? std::size_t(columns) : 0;
            isFull = isFull || used > width - 1;
            if(!isFull)
                end += bytes.size();
        });
    return text.prefix(end) + (width ? "…" : "");
}

Containers::String counted(std::size_t count, Containers::StringView noun) {
    return Utility::format(count == 1 ? "{} {}" : "{} {}s", count, noun);
}

Line& Line::add(Containers::StringView text, Style style) {
    static constexpr const char* Codes[]{"", "1", "2", "32", "33"};
    const bool isStyled = terminal().isColored && style != Style::Plain;
    if(isStyled)
        ((_line += "\033[") += Codes[std::size_t(style)]) += 'm';
    appendEscaped(_line, text, true);
    if(isStyled)
        _line += "\033[0m";
    return *this;
}

Line& Line::addSpaces(std::size_t count) {
    _line.append(count, ' ');
    return *this;
}

void Line::print() const {
    Host::print(_line + '\n');
}

void printLine(Containers::StringView text, Style style) {
    Line{}.add(text, style).print();
}

void printCut(Containers::StringView text, Style style) {
    if(terminal().isNarrow)
        printLine(shortened(oneLine(text), terminal().width), style);
    else
        printLine(text, style);
}

void printJson(Containers::StringView json) {
    std::string out;
    appendEscaped(out, json, false);
    print(out);
}

}}

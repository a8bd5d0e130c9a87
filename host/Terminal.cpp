#include "Terminal.h"

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

/* Calls the function with the bytes, the code point and the width of each
   character; the width is negative if it can't be shown */
template<class F> void forEachCharacter(Containers::StringView text, F&& each) {
    static const bool isUtf8 = std::setlocale(LC_CTYPE, "C.UTF-8");
    static_cast<void>(isUtf8);

    const char* at = text.begin();
    while(at != text.end()) {
        const std::size_t left = std::size_t(text.end() - at);
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

}

const Terminal& terminal() {
    static const Terminal out = detect();
    return out;
}

Containers::String styled(Containers::StringView text, Style style) {
    static constexpr const char* Codes[]{"", "1", "2", "32", "33"};
    if(!terminal().isColored || style == Style::Plain)
        return text;
    return Utility::format(
        "\033[{}m{}\033[0m", Codes[std::size_t(style)], text);
}

std::size_t displayWidth(Containers::StringView text) {
    std::size_t out = 0;
    forEachCharacter(text, [&](Containers::StringView, wchar_t, int width) {
        out += width > 0 ? std::size_t(width) : 0;
    });
    return out;
}

Containers::String oneLine(Containers::StringView text) {
    std::string out;
    forEachCharacter(
        text, [&](Containers::StringView bytes, wchar_t character, int width) {
            if(character == '\n')
                out += "⏎";
            else if(character == Replacement)
                out += "\xef\xbf\xbd";
            else if(width < 0)
                out += std::string{Utility::format(
                    "\\u{:.4x}", static_cast<unsigned int>(character))};
            else
                out.append(bytes.data(), bytes.size());
        });
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
        text, [&](Containers::StringView bytes, wchar_t, int columns) {
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

void printLine(Containers::StringView line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

}}

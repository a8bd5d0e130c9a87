#include "xliff.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <pugixml.hpp>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

/* What a character is written as where it can't stand for itself. In attributes,
   line breaks and tabs would become spaces. */
const char* escapeOf(char c, bool isAttribute) {
    switch(c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\r':
        return "&#13;";
    case '\n':
        return isAttribute ? "&#10;" : nullptr;
    case '\t':
        return isAttribute ? "&#9;" : nullptr;
    }
    return nullptr;
}

/* pugixml writes a carriage return in a text as it is, which readers take for
   a line break. So this is written by hand, which is faster, too. */
void appendEscaped(
    std::string& out, Containers::StringView text, bool isAttribute = false) {
    const char* begin = text.begin();
    for(const char* i = begin; i != text.end(); ++i) {
        const char* const escape = escapeOf(*i, isAttribute);
        if(!escape)
            continue;
        out.append(begin, i) += escape;
        begin = i + 1;
    }
    out.append(begin, text.end());
}

void appendAttribute(
    std::string& out, const char* name, Containers::StringView value) {
    ((out += ' ') += name) += "=\"";
    appendEscaped(out, value, true);
    out += '"';
}

void appendContext(
    std::string& out, const char* type, Containers::StringView value) {
    if(value.isEmpty())
        return;
    ((out += "<context context-type=\"") += type) += "\">";
    appendEscaped(out, value);
    out += "</context>";
}

void appendTarget(std::string& out, const ExchangeTarget& target) {
    if(target.text.isEmpty())
        return;
    out += target.state == TargetState::NeedsReview
        ? "    <target state=\"needs-review-translation\">"
        : "    <target state=\"translated\">";
    appendEscaped(out, target.text);
    out += "</target>\n";
}

void appendNoteElement(std::string& out, const ExchangeTarget& target) {
    std::string note;
    appendNote(note, target);
    if(note.empty())
        return;
    out += "    <note from=\"developer\">";
    appendEscaped(out, note);
    out += "</note>\n";
}

void appendBegin(std::string& out, const ExchangeTable& table,
    Containers::StringView code, Containers::StringView original) {
    out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<xliff version=\"1.2\" "
           "xmlns=\"urn:oasis:names:tc:xliff:document:1.2\">\n <file";
    appendAttribute(out, "original", original);
    appendAttribute(out, "source-language", table.sourceCode);
    appendAttribute(out, "target-language", code);
    out += " datatype=\"plaintext\">\n  <body>\n";
}

/* What a text's element has in all languages */
class SharedParts {
public:
    void set(const ExchangeTable& table, std::size_t row, const Marks& marks) {
        const ExchangeText& text = table.texts[row];
        _begin = "   <trans-unit";
        appendAttribute(_begin, "id", text.key);
        appendAttribute(_begin, "resname", text.key);
        _begin += " xml:space=\"preserve\" extradata=\"";
        marks.append(_begin, table.sourceCode, text.source);
        _source = ">\n    <source>";
        appendEscaped(_source, text.source);
        _source += "</source>\n";
        _place = "    <context-group purpose=\"location\">";
        appendContext(_place, "sourcefile", text.place);
        appendContext(_place, "x-object", text.object);
        _place += "</context-group>\n";
    }

    void appendUnit(std::string& out, const ExchangeLanguage& language,
        std::size_t row, const Marks& marks) const {
        const ExchangeTarget& target = language.targets[row];
        out += _begin;
        if(!target.text.isEmpty()) {
            out += ' ';
            marks.append(out, language.code, target.text);
        }
        out += '"';
        /* Some tools go by this instead of the state */
        if(!target.text.isEmpty() && target.state == TargetState::Translated)
            out += " approved=\"yes\"";
        out += _source;
        appendTarget(out, target);
        out += _place;
        appendNoteElement(out, target);
        out += "   </trans-unit>\n";
    }

private:
    std::string _begin, _source, _place;
};

}

void writeXliff(const std::vector<std::string*>& outputs,
    const ExchangeTable& table, Containers::StringView original,
    const std::function<void()>& afterEach) {
    for(std::size_t i = 0; i != outputs.size(); ++i)
        appendBegin(*outputs[i], table, table.languages[i].code, original);
    SharedParts parts;
    for(std::size_t row = 0; row != table.texts.size(); ++row) {
        const Marks marks{table.texts[row].key};
        parts.set(table, row, marks);
        for(std::size_t i = 0; i != outputs.size(); ++i)
            parts.appendUnit(*outputs[i], table.languages[i], row, marks);
        afterEach();
    }
    for(std::string* const out: outputs)
        *out += "  </body>\n </file>\n</xliff>\n";
}

namespace {

bool isXmlCharacter(unsigned int character) {
    return character == '\t' || character == '\n' || character == '\r' ||
        (character >= ' ' && character < 0xd800) ||
        (character >= 0xe000 && character <= 0xfffd) ||
        (character >= 0x10000 && character <= 0x10ffff);
}

/* Where the first byte is that XML can't have; the end if there's none. The text
   is UTF-8, which has no halves of surrogate pairs. */
const char* xmlEnd(Containers::StringView text) {
    /* Without an early exit, which lets the compiler check many at a time */
    bool isPlain = true;
    for(const char c: text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        isPlain = isPlain & ((byte >= ' ') | (byte == '\n')) & (byte != 0xef);
    }
    if(isPlain)
        return text.end();
    return std::find_if(text.begin(), text.end(), [&](const char& c) {
        const unsigned char byte = static_cast<unsigned char>(c);
        /* The last two of the basic plane */
        return (byte < ' ' && !isXmlCharacter(byte)) ||
            (byte == 0xef && text.end() - &c > 2 && (&c)[1] == '\xbf' &&
                ((&c)[2] == '\xbe' || (&c)[2] == '\xbf'));
    });
}

/* Size of the reference at the begin of a text, 0 if it's for nothing that XML
   has by itself */
std::size_t referenceSize(std::string_view text) {
    for(const std::string_view name:
        {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"})
        if(text.substr(0, name.size()) == name)
            return name.size();
    if(text.substr(0, 2) != "&#")
        return 0;
    const bool isHex = text.substr(2, 1) == "x";
    const char* const begin = text.data() + (isHex ? 3 : 2);
    const char* const end = text.data() + text.size();
    unsigned int character = 0;
    const auto result = std::from_chars(begin, end, character, isHex ? 16 : 10);
    return result.ec == std::errc{} && result.ptr != end &&
            *result.ptr == ';' && isXmlCharacter(character)
        ? std::size_t(result.ptr + 1 - text.data())
        : 0;
}

/* What pugixml passes over or leaves as it is: document types, references to
   what they define, and characters that XML can't have. Returns what it is and
   sets its place. */
const char* findUnreadable(
    Containers::StringView content, std::size_t& offset) {
    offset = std::size_t(xmlEnd(content) - content.begin());
    if(offset != content.size())
        return "a character that XML can't have";
    offset = 0;
    const std::string_view text{content.data(), content.size()};
    while((offset = text.find_first_of("&<", offset)) != text.npos) {
        const std::string_view rest = text.substr(offset);
        if(rest[0] == '&') {
            const std::size_t size = referenceSize(rest);
            if(!size)
                return "a reference to something that isn't a character";
            offset += size;
            continue;
        }
        if(rest.substr(0, 9) == "<!DOCTYPE")
            return "a document type, which isn't read";
        std::string_view end = "";
        for(const auto& part: {std::pair{"<!--", "-->"},
                std::pair{"<![CDATA[", "]]>"}, std::pair{"<?", "?>"}})
            if(rest.substr(0, std::string_view{part.first}.size()) ==
                part.first)
                end = part.second;
        offset = text.find(end, offset + 1);
        /* The parser finds what is wrong there */
        if(offset == text.npos)
            return nullptr;
    }
    return nullptr;
}

/* Without the prefix that stands for the namespace */
std::string_view nameOf(const pugi::xml_node& node) {
    const std::string_view name = node.name();
    return name.substr(name.find(':') + 1);
}

pugi::xml_node child(const pugi::xml_node& parent, std::string_view name) {
    return parent.find_child(
        [&](const pugi::xml_node& node) { return nameOf(node) == name; });
}

/* The next node inside an element in the order of the file, with or without
   those inside of the given one. Not recursive, as files may nest deeply. */
pugi::xml_node nextNode(
    pugi::xml_node node, const pugi::xml_node& element, bool goesIn) {
    if(goesIn && node.first_child())
        return node.first_child();
    while(node != element && !node.next_sibling())
        node = node.parent();
    return node == element ? pugi::xml_node{} : node.next_sibling();
}

/* Takes text in elements that only mark a part. Returns false if an element
   stands for something else. */
bool readText(const pugi::xml_node& element, Containers::String& out) {
    std::string text;
    for(pugi::xml_node i = element.first_child(); i;
        i = nextNode(i, element, true)) {
        if(i.type() == pugi::node_pcdata || i.type() == pugi::node_cdata)
            text += i.value();
        else if(i.type() == pugi::node_element && nameOf(i) != "g" &&
            nameOf(i) != "mrk")
            return false;
    }
    out = Containers::String{text};
    return true;
}

TargetState stateOf(const pugi::xml_node& unit, const pugi::xml_node& target) {
    const std::string_view approved = unit.attribute("approved").value();
    const std::string_view state = target.attribute("state").value();
    if(approved == "yes" || state == "translated" || state == "final" ||
        state == "signed-off")
        return TargetState::Translated;
    if(state == "new" || state == "needs-translation")
        return TargetState::NeedsTranslation;
    if(state.substr(0, 6) == "needs-" || approved == "no")
        return TargetState::NeedsReview;
    return TargetState::Unknown;
}

/* Converters from PO files number the units and put the key here. A colon in it
   ends what they take for the name of a file. */
std::string referenceOf(const pugi::xml_node& unit) {
    std::string out;
    for(const pugi::xml_node& group: unit.children()) {
        if(std::string_view{group.attribute("name").value()} != "po-reference")
            continue;
        for(const pugi::xml_node& context: group.children()) {
            const std::string_view type =
                context.attribute("context-type").value();
            if(type == "linenumber")
                out += ':';
            if(type == "linenumber" || type == "sourcefile")
                out += context.child_value();
        }
        break;
    }
    return out;
}

Containers::String keyOf(const pugi::xml_node& unit) {
    const char* const name = unit.attribute("resname").value();
    if(*name)
        return name;
    const std::string reference = referenceOf(unit);
    return reference.empty() ? Containers::String{unit.attribute("id").value()}
                             : Containers::String{reference};
}

void readUnit(
    const pugi::xml_node& unit, LineCounter& lines, ExchangeTable& out) {
    /* Converters from PO files make a unit of what stands at their begin */
    if(std::string_view{unit.attribute("restype").value()} ==
        "x-gettext-domain-header")
        return;
    ExchangeText text;
    text.key = keyOf(unit);
    text.line = lines.lineOf(std::size_t(unit.offset_debug()));
    text.marks = unit.attribute("extradata").value();
    const pugi::xml_node element = child(unit, "target");
    ExchangeTarget target;
    target.state = stateOf(unit, element);
    if(!readText(child(unit, "source"), text.source) ||
        !readText(element, target.text)) {
        out.faults.push_back(
            Utility::format("'{}' at line {} has an element inside its text",
                text.key, text.line));
        return;
    }
    out.texts.push_back(std::move(text));
    out.languages.front().targets.push_back(std::move(target));
}

Containers::String readFileElement(const pugi::xml_node& file,
    LineCounter& lines, std::vector<ExchangeTable>& out) {
    const Containers::String source = file.attribute("source-language").value();
    const Containers::String target = file.attribute("target-language").value();
    if(target.isEmpty())
        return Utility::format("the file element at line {} doesn't name its "
                               "target-language",
            lines.lineOf(std::size_t(file.offset_debug())));
    /* Converters may add one to those that they convert */
    if(out.empty() || out.back().sourceCode != source ||
        out.back().languages.front().code != target) {
        out.emplace_back();
        out.back().sourceCode = source;
        out.back().languages.push_back({target, {}});
    }
    for(pugi::xml_node i = file.first_child(); i;) {
        const bool isUnit = nameOf(i) == "trans-unit";
        if(isUnit)
            readUnit(i, lines, out.back());
        i = nextNode(i, file, !isUnit);
    }
    return {};
}

}

bool xmlHolds(Containers::StringView text) {
    return xmlEnd(text) == text.end();
}

Containers::String readXliff(
    Containers::StringView content, std::vector<ExchangeTable>& out) {
    LineCounter lines{content};
    std::size_t offset = 0;
    const char* const fault = findUnreadable(content, offset);
    if(fault)
        return Utility::format("{} at line {}", fault, lines.lineOf(offset));
    pugi::xml_document document;
    /* What isn't UTF-8 was refused before */
    const pugi::xml_parse_result result =
        document.load_buffer(content.data(), content.size(),
            pugi::parse_default | pugi::parse_ws_pcdata, pugi::encoding_utf8);
    if(!result)
        return Utility::format("{} at line {}", result.description(),
            lines.lineOf(std::size_t(result.offset)));
    const pugi::xml_node root = document.document_element();
    const std::string_view version = root.attribute("version").value();
    if(nameOf(root) != "xliff")
        return "it isn't XLIFF";
    if(version.substr(0, 2) != "1.")
        return Utility::format(
            "it's XLIFF {}; only versions up to 1.2 are read",
            Containers::StringView{version.data(), version.size()});
    for(const pugi::xml_node& file: root.children()) {
        if(nameOf(file) != "file")
            continue;
        const Containers::String reason = readFileElement(file, lines, out);
        if(!reason.isEmpty())
            return reason;
    }
    return {};
}

}}

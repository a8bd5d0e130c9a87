#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "Commands.h"
#include "exchange/csv.h"
#include "exchange/xliff.h"
#include "project/LanguageFiles.h"
#include "project/ObjectNames.h"
#include "project/Translations.h"
#include "storage/OutputFile.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

/* What is handed out. Refers to texts of the project. */
struct HandOut {
    ExchangeTable table;
    /* Texts to translate that are empty */
    std::size_t emptyCount = 0;
    /* Texts of the default language's file that the project doesn't have yet */
    std::size_t newerCount = 0;
};

/* Puts the translations beside the texts */
class TargetReader: public TextVisitor {
public:
    explicit TargetReader(
        Project& project, const LanguageTexts& texts, HandOut& out):
        _project(project),
        _texts(texts), _out(out) {
        ObjectNames objects{project};
        const auto view = [](Containers::StringView text) {
            return Containers::String::nullTerminatedView(text);
        };
        _rows.reserve(texts.terms().size());
        for(const Term& term: texts.terms()) {
            const bool isTaken = term.isTranslated && !term.source.isEmpty();
            _rows.push_back(isTaken ? _out.table.texts.size() : NoRow);
            if(isTaken)
                _out.table.texts.push_back({view(term.key), view(term.source),
                    view(objects.find(term.path)), view(term.path), {}, 0});
            else
                _out.emptyCount += term.isTranslated;
        }
        for(ExchangeLanguage& language: _out.table.languages)
            language.targets.resize(_out.table.texts.size());
    }

    bool isWanted(Containers::StringView code) override {
        return code == _project.defaultLanguage() || find(code);
    }

    bool begin(const LanguageSource&, const LanguageFile& file,
        const Utility::Json&) override {
        _language = find(file.code);
        return true;
    }

    void add(const LanguageText& text) override {
        const std::size_t row =
            text.term == Tracking::TextMoves::None ? NoRow : _rows[text.term];
        if(row == NoRow || text.kind != TextKind::Text)
            return;
        if(!_language) {
            compare(text);
            return;
        }
        ExchangeTarget& target = _language->targets[row];
        target.text = text.text;
        target.state = text.isOutdated ? TargetState::NeedsReview
                                       : TargetState::Translated;
        if(text.isOutdated)
            _outdated.push_back({&target, text.origin});
    }

    /* Once all files are read, which may tell what others were made from */
    void addFormerSources() {
        for(const Outdated& outdated: _outdated)
            outdated.target->before =
                _project.record().formerSource(outdated.origin);
    }

private:
    static constexpr std::size_t NoRow = ~std::size_t{};

    struct Outdated {
        ExchangeTarget* target;
        std::uint32_t origin;
    };

    ExchangeLanguage* find(Containers::StringView code) {
        for(ExchangeLanguage& language: _out.table.languages)
            if(language.code == code)
                return &language;
        return nullptr;
    }

    void compare(const LanguageText& text) {
        _differences.clear();
        if(!addDifference(_texts, text, _differences) || _differences.empty())
            return;
        _out.newerCount +=
            _differences.front().state != SourceState::ChangedInProject;
        _project.record().addFormerSource(text.text);
    }

    Project& _project;
    const LanguageTexts& _texts;
    HandOut& _out;
    /* Of each term */
    std::vector<std::size_t> _rows;
    std::vector<Outdated> _outdated;
    std::vector<SourceDifference> _differences;
    ExchangeLanguage* _language = nullptr;
};

/* Whether the languages can be handed out. Prints why not. */
bool findLanguages(
    Project& project, const Codes& codes, std::vector<ExchangeLanguage>& out) {
    for(const Containers::String& code: codes) {
        if(!project.checkLanguage(code))
            return false;
        if(code == project.defaultLanguage()) {
            fail(Utility::format("'{}' is the language of the project's own "
                                 "texts, which are beside each translation",
                code));
            return false;
        }
        out.push_back({code, {}});
    }
    if(codes.empty())
        for(const ProjectLanguage& language: project.languages())
            if(!language.isDefault)
                out.push_back({language.code, {}});
    if(out.empty())
        fail("the project has no language to translate to yet; 'add' gives it "
             "one");
    return !out.empty() &&
        std::all_of(out.begin(), out.end(),
            [](const ExchangeLanguage& l) { return isFileName(l.code); });
}

/* Prints texts that the format would lose */
bool checkTexts(const ExchangeTable& table, ExchangeFormat format) {
    bool areFine = true;
    const MessageLimit limit;
    const auto check = [&](const ExchangeText& text,
                           Containers::StringView part) {
        if(format == ExchangeFormat::Xliff
                ? xmlHolds(part)
                : !std::memchr(part.data(), '\0', part.size()))
            return;
        areFine = false;
        fail(Utility::format(
            "'{}' has a control character that the format can't hold: {}",
            text.key, part));
    };
    for(std::size_t i = 0; i != table.texts.size(); ++i) {
        const ExchangeText& text = table.texts[i];
        for(const auto& part:
            {&text.key, &text.source, &text.object, &text.place})
            check(text, *part);
        for(const ExchangeLanguage& language: table.languages) {
            check(text, language.targets[i].text);
            check(text, language.targets[i].before);
        }
    }
    return areFine;
}

bool collect(Project& project, const HandOutOptions& options, HandOut& out) {
    out = {};
    out.table.sourceCode = project.defaultLanguage();
    if(!findLanguages(project, options.codes, out.table.languages))
        return false;
    const ProjectTexts all{project};
    TargetReader reader{project, all.texts, out};
    if(!readTexts(project, all.texts, false, reader)) {
        fail("nothing was written, as what can't be read would be missing");
        return false;
    }
    reader.addFormerSources();
    if(checkTexts(out.table, options.format))
        return true;
    fail(options.format == ExchangeFormat::Xliff
            ? "nothing was written; --format csv takes most such characters"
            : "nothing was written; a spreadsheet would cut such a text");
    return false;
}

bool hasExtension(Containers::StringView path, ExchangeFormat format) {
    return format == ExchangeFormat::Csv
        ? path.hasSuffix(".csv")
        : path.hasSuffix(".xlf") || path.hasSuffix(".xliff");
}

/* The file of each language, or the one of all. None if that can't be, which
   was printed. */
std::vector<Containers::String> outputFiles(
    const ExchangeTable& table, const HandOutOptions& options) {
    if(hasExtension(options.output, options.format)) {
        if(options.format == ExchangeFormat::Csv || table.languages.size() == 1)
            return {options.output};
        fail(Utility::format("each language needs a file of its own; name "
                             "a folder instead of {}, or one language",
            options.output));
        return {};
    }
    if(options.format == ExchangeFormat::Csv) {
        fail(Utility::format(
            "{} has to be a file with the extension .csv", options.output));
        return {};
    }
    std::vector<Containers::String> out;
    for(const ExchangeLanguage& language: table.languages)
        out.push_back(
            Utility::Path::join(options.output, language.code + ".xlf"));
    std::error_code error;
    std::filesystem::create_directories(std::string{options.output}, error);
    if(!error)
        return out;
    fail(Utility::format("can't make the folder {}: {}", options.output,
        Containers::StringView{error.message()}));
    return {};
}

/* All files are there before the first one is moved to its place */
bool writeFiles(Project& project, const ExchangeTable& table,
    const HandOutOptions& options,
    const std::vector<Containers::String>& files) {
    std::vector<std::unique_ptr<OutputFile>> outputs;
    std::vector<std::string*> buffers;
    for(const Containers::String& file: files) {
        if(project.isOwnFile(file)) {
            fail(Utility::format("{} is a file of the project itself", file));
            return false;
        }
        outputs.push_back(std::make_unique<OutputFile>(file, options.force));
        buffers.push_back(&outputs.back()->buffer());
        if(!outputs.back()->fault().isEmpty())
            break;
    }
    const auto isFine = [&](const std::unique_ptr<OutputFile>& output) {
        return output->fault().isEmpty();
    };
    const auto areFine = [&] {
        return std::all_of(outputs.begin(), outputs.end(), isFine);
    };
    const auto flush = [&] {
        for(const auto& output: outputs)
            output->flushIfFull();
    };
    if(areFine()) {
        const Containers::StringView name =
            project.editor().project["settings/project/name"].asString();
        if(options.format == ExchangeFormat::Csv)
            writeCsv(*buffers.front(), table, flush);
        else
            writeXliff(buffers, table, xmlHolds(name) ? name : "", flush);
        for(const auto& output: outputs)
            output->finish();
    }
    if(areFine())
        for(const auto& output: outputs)
            output->publish();
    for(const auto& output: outputs)
        if(!isFine(output))
            fail(output->fault());
    return areFine();
}

void printHandOut(Project& project, const HandOut& out,
    const std::vector<Containers::String>& files) {
    Table table{{{"code"}, {"texts", ColumnKind::Number},
        {"outdated", ColumnKind::Number}, {"to translate", ColumnKind::Number},
        {"file"}}};
    for(std::size_t i = 0; i != out.table.languages.size(); ++i) {
        const ExchangeLanguage& language = out.table.languages[i];
        const auto count = [&](TargetState state) {
            return Utility::format("{}",
                std::count_if(language.targets.begin(), language.targets.end(),
                    [&](const ExchangeTarget& target) {
                        return target.state == state;
                    }));
        };
        table.add({{language.code},
            {Utility::format("{}", out.table.texts.size())},
            {count(TargetState::NeedsReview)}, {count(TargetState::Unknown)},
            {files[std::min(i, files.size() - 1)]}});
    }
    table.print();
    if(out.emptyCount || out.newerCount)
        printLine();
    if(out.emptyCount)
        printLine(Utility::format("{} left out.",
            counted(out.emptyCount, "empty text") +
                (out.emptyCount == 1 ? " was" : " were")));
    if(out.newerCount)
        printLine(Utility::format(
            "{} changed in {}.json, but the translators get the project's; "
            "first 'import', then 'export' again to hand out those of the file.",
            counted(out.newerCount, "text") +
                (out.newerCount == 1 ? " was" : " were"),
            project.defaultLanguage()));
}

}

int handOut(
    const ProjectOptions& projectOptions, const HandOutOptions& options) {
    Project project;
    HandOut out;
    if(!project.read(projectOptions,
           [&](Project& p) { return collect(p, options, out); }))
        return Failure;
    const std::vector<Containers::String> files =
        outputFiles(out.table, options);
    if(files.empty() || !writeFiles(project, out.table, options, files))
        return Failure;
    printHandOut(project, out, files);
    return Success;
}

}}

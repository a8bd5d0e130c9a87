#include <algorithm>
#include <vector>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "FileExport.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

void printTable(Project& project, const Codes& codes, std::size_t termCount) {
    Table table{{{"file"}, {"texts", ColumnKind::Number},
        {"to translate", ColumnKind::Number}}};
    for(const Containers::String& code: codes) {
        const TranslationMap& translations =
            project.localization().translations[code];
        /* All texts of the project are in the default language's file. The
           tables of others only have terms of the project. */
        const std::size_t count = code == project.defaultLanguage()
            ? termCount
            : std::size_t(
                  std::count_if(translations.begin(), translations.end(),
                      [](const auto& entry) { return bool(entry.second); }));
        table.add({{code + ".json"}, {Utility::format("{}", count)},
            {Utility::format("{}", termCount - count)}});
    }
    table.print();
}

}

int exportFiles(
    const ProjectOptions& projectOptions, const ExportOptions& options) {
    Project project;
    if(!project.openForWriting(projectOptions, "export") ||
        !options.choice.check(project))
        return Failure;
    FileExport files;
    const int result = files.read(project, options);
    if(result != Success)
        return result;
    if(!files.write(project))
        return Failure;
    printTable(project, files.codes, files.termCount);
    printTaken(files.sources.taken);
    printLine();
    if(!options.codes.empty() && options.codes.size() != files.codes.size())
        printLine(project.target().isArchive
                ? "An archive has the files of all languages."
                : "All files go together, as their place or keys are others "
                  "now.");
    files.print(project);
    return Success;
}

}}

/* Bytes of a project document */

#include "SampleProject.h"
#include "editor/AllLanguages.h"

using namespace OrrelinEngine;

namespace {

/* Saves the project and opens what was written */
void expectSurvivesSaving(
    EditorSession& session, const TemporaryFolder& folder) {
    const std::string file = folder.path("project.json");
    Fuzz::expect(session.save(file.data()));
    EditorSession reopened;
    Fuzz::expect(reopened.open(file.data()));

    TermMap strings, reopenedStrings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    Fuzz::registerButton(reopened);
    LocalizationTools::gatherStrings(reopened.editor(), reopenedStrings);
    Fuzz::expect(strings == reopenedStrings);
}

}

extern "C" int LLVMFuzzerTestOneInput(
    const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    Utility::Error silentErrors{nullptr};
    Utility::Warning silentWarnings{nullptr};

    EditorSession session{folder.path().data()};
    Fuzz::registerButton(session);
    if(!session.parse({reinterpret_cast<const char*>(data), size}))
        return 0;

    OrrelinEditor& editor = session.editor();
    TermMap strings;
    LocalizationTools::gatherStrings(editor, strings);
    for(const auto& term: session.localization().terms)
        LocalizationTools::termExists(editor, term.first);
    Fuzz::expectValidFiles(session);
    LocalizationTools::addLanguage(
        editor, std::uint16_t(size % AllLanguageCount));
    LocalizationTools::addLanguage(editor, 0);
    LocalizationTools::removeLanguage(editor, "de");
    session.changeManager().undoLast();
    session.changeManager().redoLastUndo();
    /* Waits for the disk, so not each time */
    if(size % 16 == 0)
        expectSurvivesSaving(session, folder);
    return 0;
}

/* Bytes of a project document */

#include "SampleProject.h"
#include "editor/AllLanguages.h"

using namespace OrrelinEngine;

namespace {

/* Opens what would be saved, which then is saved in the same way */
void expectSurvivesSaving(EditorSession& session) {
    const auto saved = session.write();
    Fuzz::expect(bool(saved));
    EditorSession reopened;
    Fuzz::expect(reopened.open("project.json", *saved));
    Fuzz::expect(reopened.write() == saved);

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
    if(!session.open(folder.path("project.json").data(),
           {reinterpret_cast<const char*>(data), size}))
        return 0;
    Fuzz::expect(Fuzz::isUtf8(session.projectFile().document));

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
    expectSurvivesSaving(session);
    return 0;
}

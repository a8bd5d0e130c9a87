#include <iostream>
#include <ChangeManager.h>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
#include <Tools/LocalizationTools.h>
#include <session/EditorSession.h>
#include <editor/OrrelinEditor.h>
#include <editor/ProjectFile.h>

using namespace OrrelinEngine;

int main() {
    EditorSession session;
    if(!session.parse(R"({
        "settings": {"project": {"name": "Consumer"},
                     "localization": {"defaultLanguage": "en"}},
        "objects": {"sign": {"components": [
            {"type": "text", "text": {"text": "Welcome"}}]}},
        "languages": {"en": {"name": "English"}}
    })"))
        return 1;

    TermMap strings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    session.changeManager().pushChange(
        "/objects/sign/components/0/text/text", "Come in", false);

    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    LocalizationTools::writeTerms(session.editor(), {"en"},
        LocalizationTools::LocalizationFormat::I18next, names, contents);
    std::cout.write(contents[0].data(), std::streamsize(contents[0].size()));

    session.changeManager().undoLast();
    return strings.size() == 2 && !session.changeManager().hasUnsavedChanges()
        ? 0
        : 1;
}

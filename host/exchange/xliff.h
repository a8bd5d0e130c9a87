#ifndef Orrelin_host_exchange_xliff_h
#define Orrelin_host_exchange_xliff_h

#include <functional>

#include "ExchangeTable.h"

namespace OrrelinEngine { namespace Host {

/* Writes XLIFF 1.2, which has one language in each file, for each language of
   the table into one of the outputs. So what is the same in all is made once.
   The attribute original names the project. Texts have to pass xmlHolds(). The
   function is called after each text, and may take what was written so far. */
void writeXliff(const std::vector<std::string*>& outputs,
    const ExchangeTable& table, Containers::StringView original,
    const std::function<void()>& afterEach);

/* Whether XML can have a text, which most control characters prevent */
bool xmlHolds(Containers::StringView text);

/* Adds a table with one language for file elements of the same language in a
   row. Reads versions 1.0 to 1.2, also with other tools' prefixes and groups.
   Never reads a document type or anything that the content refers to. Returns
   why the content can't be read. */
Containers::String readXliff(
    Containers::StringView content, std::vector<ExchangeTable>& out);

}}

#endif

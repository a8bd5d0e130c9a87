#ifndef Orrelin_host_exchange_xliff_h
#define Orrelin_host_exchange_xliff_h

#include "ExchangeTable.h"

namespace OrrelinEngine { namespace Host {

/* XLIFF 1.2 with one language of the table. The attribute original names the
   project. Texts have to pass xmlHolds(). */
void writeXliff(std::string& out, const ExchangeTable& table,
    const ExchangeLanguage& language, Containers::StringView original);

/* Whether XML can have a text, which most control characters prevent */
bool xmlHolds(Containers::StringView text);

/* Adds a table with one language for each file element. Versions 1.0 to 1.2,
   also with other tools' prefixes and groups. Never reads a document type or
   anything that the content refers to. Returns why the content can't be
   read. */
Containers::String readXliff(
    Containers::StringView content, std::vector<ExchangeTable>& out);

}}

#endif

#ifndef Orrelin_host_exchange_csv_h
#define Orrelin_host_exchange_csv_h

#include <functional>

#include "ExchangeTable.h"

namespace OrrelinEngine { namespace Host {

/* CSV as in RFC 4180, in UTF-8 with the byte order mark that spreadsheets want.
   The columns are named in the first row: key, object, place, note, the code of
   the source language, a column for each other language, and handed-out with
   the marks.

   A spreadsheet runs cells as formulas that begin with =, +, -, @, their wide
   forms, a tab or a line break. Such a text gets an apostrophe in front, and
   one that has apostrophes before such a character gets one more. A reader
   takes one away where such a character follows the apostrophes. All other
   texts stay as they are, also those that begin with an apostrophe.

   The function is called after each text, and may take what was written so
   far. */
void writeCsv(std::string& out, const ExchangeTable& table,
    const std::function<void()>& afterEach);

/* Separators are commas, semicolons or tabs, as spreadsheets choose by the
   language of their user. Columns may come in any order. All that aren't among
   the ones above are languages. Returns why the content can't be read. */
Containers::String readCsv(Containers::StringView content,
    Containers::StringView sourceCode, ExchangeTable& out);

}}

#endif

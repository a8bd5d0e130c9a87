/* Writes the language files that Node's and Qt's tools are measured with, as
   FOLDER/<number of terms>.json */

#include <fstream>

#include "languageFile.h"

int main(int argc, char** argv) {
    if(argc != 2)
        return 1;
    for(const std::size_t terms: {1000, 10000, 100000, 1000000})
        std::ofstream{
            std::string{argv[1]} + "/" + std::to_string(terms) + ".json"}
            << OrrelinEngine::languageFile(terms);
}

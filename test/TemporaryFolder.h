#ifndef Orrelin_test_TemporaryFolder_h
#define Orrelin_test_TemporaryFolder_h

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace OrrelinEngine {

/* A new folder that is removed with all that is in it */
class TemporaryFolder {
public:
    explicit TemporaryFolder():
        _path{std::filesystem::temp_directory_path() / "orrelin-XXXXXX"} {
        if(!mkdtemp(_path.data()))
            throw std::runtime_error{"no temporary folder"};
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(_path); }
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return _path; }
    std::string path(const std::string& name) const {
        return _path + "/" + name;
    }

    /* Settings in which # stands for a folder outside of the project */
    std::string withOutside(std::string settings) const {
        const std::size_t at = settings.find('#');
        return at == std::string::npos
            ? settings
            : settings.replace(at, 1, path("outside"));
    }

    void write(const std::string& name, const std::string& content) const {
        const std::filesystem::path file = path(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream{file, std::ios::binary} << content;
    }

    std::string read(const std::string& name) const {
        return readFile(path(name));
    }

    static std::string readFile(const std::string& file) {
        std::ifstream in{file, std::ios::binary};
        return {std::istreambuf_iterator<char>{in}, {}};
    }

private:
    std::string _path;
};

}

#endif

#ifndef Orrelin_test_Random_h
#define Orrelin_test_Random_h

#include <cstdint>
#include <cstdlib>
#include <random>

namespace OrrelinEngine {

/* The same numbers with any standard library */
class Random {
public:
    explicit Random(std::uint64_t seed): _engine{seed} {}

    std::size_t below(std::size_t n) { return std::size_t(_engine() % n); }
    bool oneIn(std::size_t n) { return !below(n); }
    template<class T, std::size_t n> const T& oneOf(const T (&values)[n]) {
        return values[below(n)];
    }

private:
    std::mt19937_64 _engine;
};

inline std::uint64_t environment(const char* name, std::uint64_t otherwise) {
    const char* const value = std::getenv(name);
    return value ? std::strtoull(value, nullptr, 10) : otherwise;
}

}

#endif

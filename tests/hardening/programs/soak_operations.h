// What a program does with the library, operation by operation.

#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

// The same at every run from one seed.
class Chance {
public:
    explicit Chance(unsigned seed) : m_engine(seed) {}

    std::size_t below(std::size_t end) { return m_engine() % end; }
    std::string text(std::size_t mostBytes);   // letters, digits, blanks and marks
    std::string bytes(std::size_t mostBytes);  // of any kind

private:
    std::mt19937 m_engine;
};

struct Operation {
    const char* name;
    int weight;                   // how often it comes, in relation to the others
    bool (*run)(Chance& chance);  // false: its result is not what it should be
};

// `folder` is the operations' own, and `programFolder` the one of the program.
std::vector<Operation> operationsIn(const std::string& folder, const std::string& programFolder);

// The long run of the tests, which `./test --full` asks for.
#pragma once

#include <cstdlib>
#include <string>

#include "doctest/doctest.h"

namespace test {

inline bool is_full_run() {
    return std::getenv("TESSERA_FULL") != nullptr;
}

// A figure that the long run prints at its end.
inline void tell_figure(const std::string& name, long number) {
    if (is_full_run()) MESSAGE("figure: ", name, " ", number);
}

}  // namespace test

// The COMMON statements a program has run: the variable lists that CHAIN keeps.
#pragma once

#include <array>
#include <string>

namespace tessaly::io {

inline constexpr int kMaxCommonStatements = 10;

struct ChainState {
    std::array<std::string, kMaxCommonStatements> commonLists; // "A, B$, C()" as written
    int commonCount = 0;

    void reset() { commonCount = 0; }
};

} // namespace tessaly::io

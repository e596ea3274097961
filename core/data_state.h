// The DATA items collected for READ and the position of the next one.
#pragma once

#include <string>
#include <vector>

namespace tessaly::core {

inline constexpr size_t kMaxDataItems = 65535;

struct DataState {
    std::vector<std::string> items;
    bool collected = false;
    int index = 0;        // items read so far
    int restoreLine = 0;  // DATA from this line number on

    void reset()
    {
        items.clear();
        collected = false;
        index = 0;
        restoreLine = 0;
    }
};

} // namespace tessaly::core

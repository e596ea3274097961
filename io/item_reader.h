// Reading the items of INPUT # and the lines of LINE INPUT # byte by byte, from a disk file or from
// the bytes a serial port has received. next(byte) gives the next byte: 1 when there is one, 0 at
// the end of what there is, -1 on a read error.
#pragma once

#include <string>

#include "core/text_scan.h"

namespace tessaly::io {

// One item: a double quote toggles a quoted state and is not stored; inside quotes every byte is
// stored; outside, a comma or a CR ends the item, and so does a blank for a number; LF is passed
// over; an ending byte before anything of the item is passed over too. Returns 1 when the item
// ended, or what next() returned when the bytes ran out first (0) or failed (-1).
template <typename Next>
int readItem(Next&& next, bool isString, std::string& item)
{
    core::QuoteState quotes;
    bool started = false;
    for (;;) {
        char byte = 0;
        int got = next(byte);
        if (got <= 0)
            return got;
        if (quotes.takesQuote(byte)) {
            started = true;
            continue;
        }
        if (quotes.inside()) {
            item += byte;
            continue;
        }
        if (byte == '\n')
            continue;
        bool ends = byte == ',' || byte == '\r' || (!isString && byte == ' ');
        if (ends) {
            // Separators before anything of the item are passed over.
            if (!started && item.empty())
                continue;
            return 1;
        }
        item += byte;
        started = true;
    }
}

} // namespace tessaly::io

// The screen's characters: code page 932 with the single-byte pictures of the system's own set.
//
// What each single byte shows:
//   0x00..0x1B  the font's control-code boxes (U+0000..U+001B), narrowed into one cell;
//   0x1C..0x1F  the arrows of the cursor-movement bytes they are: right, left, up, down;
//   0x20..0x7E  ASCII, except 0x5C, the yen sign (U+00A5), and 0x7E, the overline (U+203E),
//               as the system's single-byte set shows them;
//   0x7F        the font's DEL box;
//   0xA1..0xDF  the half-width katakana of code page 932 (U+FF61..U+FF9F);
//   0x80, 0xA0, 0xFD..0xFF  nothing: code page 932 gives them no character (the text plane also
//               draws a lone 0xA0 as a blank);
//   0x81..0x9F, 0xE0..0xFC  nothing alone: they are lead bytes, shown only with their trail byte.
// Double-byte codes show their code page 932 character (NEC and IBM extensions included); a code
// that does not convert, or a character the font lacks, leaves its two cells blank.
#include "screen/screen_characters.h"

#include "core/shift_jis.h"

namespace tessaly::screen {

namespace {

constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kYenSign = 0x00A5;
constexpr uint32_t kOverline = 0x203E;
constexpr uint32_t kArrows[] = {0x2192, 0x2190, 0x2191, 0x2193}; // 0x1C..0x1F

bool isTrailByte(unsigned byte) { return byte >= 0x40 && byte <= 0xFC && byte != 0x7F; }

uint32_t singleByteCharacter(uint16_t code, uint32_t converted)
{
    if (code >= 0x1C && code <= 0x1F)
        return kArrows[code - 0x1C];
    if (code == 0x5C)
        return kYenSign;
    if (code == 0x7E)
        return kOverline;
    return converted;
}

} // namespace

std::vector<uint16_t> ScreenCharacterCodes()
{
    std::vector<uint16_t> codes;
    codes.reserve(256 + 60 * 188);
    for (unsigned byte = 0; byte <= 0xFF; ++byte)
        codes.push_back(static_cast<uint16_t>(byte));
    for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
        if (!core::IsLeadByte(static_cast<uint8_t>(lead)))
            continue;
        for (unsigned trail = 0x40; trail <= 0xFC; ++trail) {
            if (isTrailByte(trail))
                codes.push_back(static_cast<uint16_t>(lead << 8 | trail));
        }
    }
    return codes;
}

std::vector<uint32_t> ScreenCodepoints(const std::vector<uint16_t>& codes)
{
    std::vector<uint32_t> codepoints = core::ShiftJisCodepoints(codes);
    for (size_t k = 0; k < codes.size(); ++k) {
        uint32_t& codepoint = codepoints[k];
        if (codes[k] <= 0xFF)
            codepoint = singleByteCharacter(codes[k], codepoint);
        if (codepoint == kReplacement)
            codepoint = kNoCharacter;
    }
    return codepoints;
}

} // namespace tessaly::screen

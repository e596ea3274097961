// The screen font's glyph table kept between runs, so that a start reads a small binary file instead
// of parsing the .hex text: one file per .hex file and version of the table, in the user's cache
// folder ($XDG_CACHE_HOME/tessaly, else ~/.cache/tessaly). Its name holds the .hex file's size and
// modification time, so a changed font builds a new one. Every failure here is silent: the font
// then comes from the .hex file.
#pragma once

#include <optional>
#include <string>

#include "screen/glyph_table.h"

namespace tessaly::screen {

// The user's cache folder for Tessaly; empty when neither XDG_CACHE_HOME nor HOME names one.
[[nodiscard]] std::string UserFontCacheFolder();
// The key of the .hex file as it is now; nullopt when it is not a readable file.
[[nodiscard]] std::optional<FontSourceKey> FontSourceKeyOf(const std::string& hexPath);
// The cache file's name (no folder) for a .hex file with this key.
[[nodiscard]] std::string FontCacheFileName(const std::string& hexPath, const FontSourceKey& key);
// The table stored in the folder for this .hex file and key; nullopt when there is none or it does
// not check.
[[nodiscard]] std::optional<GlyphTable> ReadFontCache(const std::string& folder, const std::string& hexPath,
    const FontSourceKey& key);
// Stores the table (the folder is made when missing; a temporary file renamed into place, so a
// reader never sees half a file) and removes the files of other keys of the same .hex file; false
// when it could not be stored.
bool WriteFontCache(const std::string& folder, const std::string& hexPath, const FontSourceKey& key,
    const GlyphTable& table);

} // namespace tessaly::screen

// The classes of single characters that statement text is read by. ASCII only: a byte of a
// double-byte character is in none of them (a second byte can look like a letter; the scans that
// must tell it apart do so themselves).
#pragma once

namespace tessaly::core {

[[nodiscard]] constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

[[nodiscard]] constexpr bool isUpperLetter(char c) { return c >= 'A' && c <= 'Z'; }

[[nodiscard]] constexpr bool isLetter(char c) { return isUpperLetter(c) || (c >= 'a' && c <= 'z'); }

// A character that continues a variable name: letters, digits, ".", "_" and the type marks.
[[nodiscard]] constexpr bool isNameChar(char c)
{
    return isLetter(c) || isDigit(c) || c == '.' || c == '_' || c == '%' || c == '!' || c == '#' || c == '$';
}

// A character of a name read from text already upper-cased: isNameChar without a-z, which there
// can only stand outside a name.
[[nodiscard]] constexpr bool isUpperCaseNameChar(char c) { return isNameChar(c) && !(c >= 'a' && c <= 'z'); }

// A character that, standing before SPC or TAB in a PRINT item, makes the word part of a longer
// name: letters, digits, "." and "$". Narrower than isNameChar: after "_" or the marks "%", "!"
// and "#" the word is still the spacing function, so A%TAB(5) tabs.
[[nodiscard]] constexpr bool isPrintItemNameChar(char c) { return isLetter(c) || isDigit(c) || c == '.' || c == '$'; }

[[nodiscard]] constexpr char toUpperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace tessaly::core

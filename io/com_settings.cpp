#include "io/com_settings.h"

#include <algorithm>
#include <array>

#include "core/char_class.h"
#include "core/text_scan.h"

namespace tessaly::io {

namespace {

// The decimal value of a text's leading digits (after blanks and a sign), held within int range.
long decimalValue(std::string_view text)
{
    size_t at = text.find_first_not_of(' ');
    if (at == std::string_view::npos)
        return 0;
    bool negative = text[at] == '-';
    if (text[at] == '-' || text[at] == '+')
        ++at;
    long value = 0;
    for (; at < text.size() && core::isDigit(text[at]); ++at)
        value = std::min(value * 10 + (text[at] - '0'), 1'000'000'000L);
    return negative ? -value : value;
}

} // namespace

std::string ComSettings::lineText() const
{
    return std::to_string(speed) + ',' + parity + ',' + std::to_string(dataBits) + ',' + stopBits;
}

std::optional<core::ErrorId> parseComName(std::string_view name, ComSettings& settings)
{
    size_t com = name.find("COM");
    size_t colon = name.find(':');
    std::string_view number = colon == std::string_view::npos || colon < com + 3
        ? name.substr(com + 3)
        : name.substr(com + 3, colon - com - 3);
    long port = decimalValue(number);
    if (port == 0)
        port = 1;
    if (port < 1)
        return core::ErrorId::IllegalFunctionCall;
    settings.port = static_cast<int>(port);
    if (colon == std::string_view::npos)
        return core::ErrorId::SyntaxError;

    // Five fields, each trimmed; a sixth (a comma in the flow field) is no flow field.
    std::array<std::string, 5> fields;
    std::string_view rest = name.substr(colon + 1);
    for (size_t k = 0; k < fields.size(); ++k) {
        size_t comma = k + 1 < fields.size() ? rest.find(',') : std::string_view::npos;
        if (k + 1 < fields.size() && comma == std::string_view::npos)
            return core::ErrorId::SyntaxError;
        fields[k] = core::trimBlanks(rest.substr(0, comma));
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }

    long speed = decimalValue(fields[0]);
    if (speed < 110 || speed > 256'000)
        return core::ErrorId::SyntaxError;
    const std::string& parity = fields[1];
    if (parity != "E" && parity != "O" && parity != "N")
        return core::ErrorId::SyntaxError;
    const std::string& data = fields[2];
    bool dataFits = (data == "8" && parity == "N") || (data == "7" && parity != "N");
    if (!dataFits)
        return core::ErrorId::SyntaxError;
    const std::string& stop = fields[3];
    if (stop != "1" && stop != "1.5" && stop != "2")
        return core::ErrorId::SyntaxError;
    const std::string& flow = fields[4];
    if (flow != "X" && flow != "N")
        return core::ErrorId::SyntaxError;

    settings.speed = static_cast<int>(speed);
    settings.parity = parity[0];
    settings.dataBits = data[0] - '0';
    settings.stopBits = stop;
    settings.handshaking = flow == "X" ? Handshaking::RequestToSendXonXoff : Handshaking::RequestToSend;
    return std::nullopt;
}

} // namespace tessaly::io

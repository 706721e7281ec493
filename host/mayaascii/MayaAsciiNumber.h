// A number word of a Maya ASCII file: "yes", "on" and "true" are 1, "no", "off" and "false" are
// 0, anything else is a decimal number with an optional leading '+'.
#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>

namespace vqmhost {

inline bool parseMayaAsciiNumber(std::string_view text, double& value)
{
    if (text.empty()) return false;
    if (text == "yes" || text == "on" || text == "true") {
        value = 1.0;
        return true;
    }
    if (text == "no" || text == "off" || text == "false") {
        value = 0.0;
        return true;
    }
    const char* begin = text.data();
    const char* end = begin + text.size();
    if (*begin == '+') ++begin;

    // Most words are short plain decimals ("12", "-0.25"): at most 15 digits make an integer that
    // a double holds exactly, and one division by an exact power of ten (up to 10^22) rounds it
    // correctly, as std::from_chars does. Everything else goes to std::from_chars.
    static const double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const char* p = begin;
    const bool negative = p != end && *p == '-';
    if (negative) ++p;
    uint64_t mantissa = 0;
    int digits = 0, fractionDigits = 0;
    bool point = false, plain = p != end && *p >= '0' && *p <= '9';
    for (; plain && p != end; ++p) {
        const char c = *p;
        if (c >= '0' && c <= '9') {
            mantissa = mantissa * 10 + uint64_t(c - '0');
            ++digits;
            if (point) ++fractionDigits;
        } else if (c == '.' && !point && p + 1 != end) {
            point = true;
        } else {
            plain = false;
        }
    }
    if (plain && digits <= 15) {
        double magnitude = double(mantissa);
        if (fractionDigits > 0) magnitude /= kPowersOfTen[fractionDigits];
        value = negative ? -magnitude : magnitude;
        return true;
    }
    auto result = std::from_chars(begin, end, value);
    return result.ec == std::errc() && result.ptr == end;
}

}  // namespace vqmhost

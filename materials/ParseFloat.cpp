#include "materials/MaterialsExporter.h"

namespace vqm {

float parseFloat(const char* text)
{
    while (*text == ' ' || *text == '\t') ++text;
    bool negative = *text == '-';
    if (negative) ++text;
    uint32_t digits = 0;
    for (; *text >= '0' && *text <= '9'; ++text) digits = digits * 10 + uint32_t(*text - '0');
    float value = float(digits);
    if (*text == '.') {
        ++text;
        float scale = 0.1f;
        for (; *text >= '0' && *text <= '9'; ++text, scale *= 0.1f) value += float(*text - '0') * scale;
    }
    if (*text == 'e' || *text == 'E') {
        ++text;
        bool negativeExponent = *text == '-';
        if (*text == '-' || *text == '+') ++text;
        uint32_t exponent = 0;
        for (; *text >= '0' && *text <= '9'; ++text) exponent = exponent * 10 + uint32_t(*text - '0');
        // Powers of ten in steps of 1e8, then of 10.
        float power = 1.0f;
        for (; exponent >= 8; exponent -= 8) power *= 1e8f;
        for (; exponent > 0; --exponent) power *= 10.0f;
        value = negativeExponent ? value / power : value * power;
    }
    return negative ? -value : value;
}

}  // namespace vqm

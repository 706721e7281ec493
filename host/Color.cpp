// MColor's colour models.
#include <maya/MColor.h>

#include <algorithm>
#include <cmath>

bool MColor::get(MColorType type, float& c1, float& c2, float& c3) const
{
    switch (type) {
    case kRGB:
        c1 = r;
        c2 = g;
        c3 = b;
        return true;
    case kCMY:
        c1 = 1.0f - r;
        c2 = 1.0f - g;
        c3 = 1.0f - b;
        return true;
    case kHSV: {
        float high = std::max(r, std::max(g, b));
        float low = std::min(r, std::min(g, b));
        float delta = high - low;
        c3 = high;
        c2 = high > 0.0f ? delta / high : 0.0f;
        if (delta <= 0.0f) {
            c1 = 0.0f;
        } else if (high == r) {
            c1 = 60.0f * std::fmod((g - b) / delta, 6.0f);
        } else if (high == g) {
            c1 = 60.0f * ((b - r) / delta + 2.0f);
        } else {
            c1 = 60.0f * ((r - g) / delta + 4.0f);
        }
        if (c1 < 0.0f) c1 += 360.0f;
        return true;
    }
    default: return false;
    }
}

bool MColor::set(MColorType type, float c1, float c2, float c3, float alpha)
{
    a = alpha;
    switch (type) {
    case kRGB:
        r = c1;
        g = c2;
        b = c3;
        return true;
    case kCMY:
        r = 1.0f - c1;
        g = 1.0f - c2;
        b = 1.0f - c3;
        return true;
    case kHSV: {
        float hue = std::fmod(c1, 360.0f);
        if (hue < 0.0f) hue += 360.0f;
        float chroma = c3 * c2;
        float x = chroma * (1.0f - std::fabs(std::fmod(hue / 60.0f, 2.0f) - 1.0f));
        float m = c3 - chroma;
        float rr = 0, gg = 0, bb = 0;
        int sector = int(hue / 60.0f) % 6;
        switch (sector) {
        case 0: rr = chroma; gg = x; break;
        case 1: rr = x; gg = chroma; break;
        case 2: gg = chroma; bb = x; break;
        case 3: gg = x; bb = chroma; break;
        case 4: rr = x; bb = chroma; break;
        default: rr = chroma; bb = x; break;
        }
        r = rr + m;
        g = gg + m;
        b = bb + m;
        return true;
    }
    default: return false;
    }
}

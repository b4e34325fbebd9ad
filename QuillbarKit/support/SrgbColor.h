#pragma once

/// A colour in the sRGB space: red, green, blue and alpha from 0 to 1, not premultiplied. Plain numbers, so
/// that code which has no business with windows can carry a colour.
struct SrgbColor
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const SrgbColor&) const = default;
};

#include "shell/NotchGeometryMath.h"

#include <algorithm>

QSizeF NotchGeometryMath::notchSize(double safeAreaTop, double statusBarThickness,
                                    std::optional<double> leftAreaMaxX, std::optional<double> rightAreaMinX)
{
    double width = defaultWidth;
    if (leftAreaMaxX && rightAreaMinX) {
        const double gap = *rightAreaMinX - *leftAreaMaxX;
        if (gap > minGap)
            width = gap;
    }
    return {width, std::max(safeAreaTop, statusBarThickness)};
}

#include "core/kitfigure.h"

namespace zorbo {

const std::array<KitShape, 14> &kitfigure()
{
    static const std::array<KitShape, 14> shapes = {{
        {"shpstreif", 0, 0, 1680, 195, 135, 615},
        {"shpstreif", 1, 1, 1800, 315, 135, 495},
        {"shpstreif", 2, 0, 1920, 345, 135, 465},
        {"shpstreif", 3, 1, 2040, 315, 135, 495},
        {"shpstreif", 4, 0, 2160, 195, 135, 615},
        {"shpsock", 0, 0, 2160, 1245, 135, 255},
        {"shpsock", 1, 0, 1680, 1245, 135, 255},
        {"shparm", 0, 1, 2280, 195, 135, 255},
        {"shparm", 1, 1, 1560, 195, 135, 255},
        {"shphose", 0, 2, 1860, 840, 255, 255},
        {"shphose", 1, 2, 2100, 840, 135, 375},
        {"shphose", 2, 2, 1740, 840, 135, 375},
        {"shpstreifh", 0, 3, 2220, 840, 75, 375},
        {"shpstreifh", 1, 3, 1680, 840, 75, 375},
    }};
    return shapes;
}

} // namespace zorbo

#include "desktop/free_sizer.h"

#include <algorithm>
#include <cmath>

namespace desktop {

int px(double twips) {
    return static_cast<int>(std::lround(twips / TwipsPerPixel));
}

double twips(int pixels) {
    return pixels * TwipsPerPixel;
}

namespace {

int pixels(double twips, double ratio) {
    return static_cast<int>(std::lround(twips / TwipsPerPixel * ratio));
}

// A window narrower than the controls' least size still shows them, only smaller.
double ratio(int shown, int designed) {
    return designed > 0 && shown > 0 ? static_cast<double>(shown) / designed : 1.0;
}

}  // namespace

bool FreeSizer::follow(QSize designed, QSize shown) {
    const double x = ratio(shown.width(), designed.width());
    const double y = ratio(shown.height(), designed.height());
    // Half a pixel over the whole form is no change: rounding would place every control
    // where it stands already.
    const double still = 0.5 / std::max({designed.width(), designed.height(), 1});
    if (std::abs(x - x_) < still && std::abs(y - y_) < still) return false;
    x_ = x;
    y_ = y;
    return true;
}

QRect FreeSizer::place(double left, double top, double width, double height) const {
    return QRect(pixels(left, x_), pixels(top, y_), std::max(0, pixels(width, x_)),
                 std::max(0, pixels(height, y_)));
}

QPointF FreeSizer::twipsAt(QPointF shown) const {
    // Whole pixels, as the classic toolkit counted them.
    return QPointF(static_cast<int>(shown.x()) * TwipsPerPixel / x_,
                   static_cast<int>(shown.y()) * TwipsPerPixel / y_);
}

}  // namespace desktop

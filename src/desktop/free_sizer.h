#pragma once

#include <QPointF>
#include <QRect>
#include <QSize>

namespace desktop {

// The forms count in twips, 15 to a pixel of the screen.
constexpr double TwipsPerPixel = 15.0;
int px(double twips);
double twips(int pixels);

// freeSizer1: a form's contents follow its window. The form keeps every place and size in
// twips as it was designed, and its own code goes on working in those; the window shows
// them stretched by the ratio of the area it gives the controls to the designed one, and
// fonts and the pane's page by the smaller of the two ratios, so that text still fits its
// box. A maximised form thus fills the screen without its code knowing.
class FreeSizer {
  public:
    // The designed area and the one shown now, in pixels; true when the ratios changed.
    bool follow(QSize designed, QSize shown);

    // Where a control placed at these twips stands in the window now.
    QRect place(double left, double top, double width, double height) const;
    // A point of a control's widget, in pixels now, in the twips the form's code knows.
    QPointF twipsAt(QPointF shown) const;
    // What a font of the designed size, in points, becomes.
    double fontPoints(double designed) const { return designed * fontScale(); }
    double fontScale() const { return x_ < y_ ? x_ : y_; }

  private:
    double x_ = 1, y_ = 1;
};

}  // namespace desktop

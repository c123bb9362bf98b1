#pragma once

#include <QWidget>
#include <array>

#include "surface/raster/Bitmap.h"

namespace zelvane {

/// How often each brightness occurs: the picture's as a body, the result's as a line before it.
class HistogramView : public QWidget {
 public:
  explicit HistogramView(QWidget* parent);

  void SetBefore(const Bitmap& picture);
  void SetAfter(const Bitmap& result);

  QSize sizeHint() const override { return {258, 110}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  using Counts = std::array<double, 256>;
  static Counts CountsOf(const Bitmap& picture);

  Counts before_{}, after_{};
};

}  // namespace zelvane

#pragma once

#include "surface/raster/Rect.h"

namespace zelvane {

/// Hears from an overlay what it covers, in units of the view.
class OverlayTracer {
 public:
  explicit OverlayTracer(const Rect& inside) : inside_(inside) {}
  virtual ~OverlayTracer() = default;

  /// The only units that matter; an overlay needn't go through others.
  const Rect& Inside() const { return inside_; }
  enum class Tone { Inverted, Black, White };
  /// Of the pieces that follow; at first they are inverted.
  virtual void SetTone(Tone) {}
  /// Units come in pieces that don't overlap, those that lie together one after the other.
  virtual void Cover(const Rect& piece) = 0;

 private:
  Rect inside_;
};

}  // namespace zelvane

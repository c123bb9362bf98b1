#pragma once

#include <cstdint>
#include <string>

#include "surface/forms/controls/Label.h"
#include "surface/raster/Color.h"

namespace zelvane {

/// Where a message box comes up.
enum StartUpPositions : int16_t { kAtTopLeft = 0, kCentredOnWindow = 1, kCentredOnScreen = 2 };

/// How message boxes look and behave. A colour written as `kNoColor` becomes the default of that colour; a
/// number that doesn't count becomes the one that is told.
class MsgBoxProperties {
 public:
  Color BackColorBody() const { return BackColorBody_; }
  void SetBackColorBody(Color colour) { BackColorBody_ = Or(colour, SystemColor::ButtonFace); }
  Color BackColorButtons() const { return BackColorButtons_; }
  void SetBackColorButtons(Color colour) { BackColorButtons_ = Or(colour, SystemColor::ButtonFace); }
  Color BackColorHeading() const { return BackColorHeading_; }
  void SetBackColorHeading(Color colour) { BackColorHeading_ = Or(colour, SystemColor::ActiveCaption); }
  Color ForeColorBody() const { return ForeColorBody_; }
  void SetForeColorBody(Color colour) { ForeColorBody_ = Or(colour, SystemColor::ButtonText); }
  Color ForeColorHeading() const { return ForeColorHeading_; }
  void SetForeColorHeading(Color colour) { ForeColorHeading_ = Or(colour, SystemColor::HighlightText); }

  /// The body is shaded from `BackColorBody` on.
  bool GradientPaint() const { return GradientPaint_; }
  void SetGradientPaint(bool paint) { GradientPaint_ = paint; }
  /// 1 to 16, else 1. From 5 on it is kept with its neighbour's number: 5 as 6, 6 as 5.
  int16_t GradientDirection() const { return GradientDirection_; }
  void SetGradientDirection(int16_t direction);
  /// 1 draws three lines under the heading; else 0.
  int16_t HeadingType() const { return HeadingType_; }
  void SetHeadingType(int16_t type) { HeadingType_ = Within(type, 1, 0); }
  bool SolidColorHeading() const { return SolidColorHeading_; }
  void SetSolidColorHeading(bool solid) { SolidColorHeading_ = solid; }
  /// Of `Alignments`, else `kAlignLeft`.
  int16_t TextAlignment() const { return TextAlignment_; }
  void SetTextAlignment(int16_t alignment) { TextAlignment_ = Within(alignment, kAlignCentre, kAlignLeft); }

  /// The box can be dragged by its body and its title.
  bool Moveable() const { return Moveable_; }
  void SetMoveable(bool moveable) { Moveable_ = moveable; }
  bool KeepOnTop() const { return KeepOnTop_; }
  void SetKeepOnTop(bool keep) { KeepOnTop_ = keep; }
  /// The call waits for the answer; without, it returns at once and the box stays up.
  bool Modal() const { return Modal_; }
  void SetModal(bool modal) { Modal_ = modal; }
  /// After so many seconds the box goes by itself; 0 for never.
  int16_t TimerSeconds() const { return TimerSeconds_; }
  void SetTimerSeconds(int16_t seconds) { TimerSeconds_ = seconds < 0 ? int16_t{0} : seconds; }
  bool SoundBeep() const { return SoundBeep_; }
  void SetSoundBeep(bool beep) { SoundBeep_ = beep; }
  /// The heading has a close box.
  bool ControlBox() const { return ControlBox_; }
  void SetControlBox(bool control_box) { ControlBox_ = control_box; }
  /// Of `StartUpPositions`, else `kCentredOnScreen`.
  int16_t StartUpPosition() const { return StartUpPosition_; }
  void SetStartUpPosition(int16_t position) {
    StartUpPosition_ = Within(position, kCentredOnScreen, kCentredOnScreen);
  }
  /// For `kAtTopLeft`, in twips from 0 up.
  int32_t Top() const { return Top_; }
  void SetTop(int32_t top) { Top_ = top < 0 ? 0 : top; }
  int32_t Left() const { return Left_; }
  void SetLeft(int32_t left) { Left_ = left < 0 ? 0 : left; }
  /// The title of a message that is given none.
  const std::string& DefaultTitle() const { return DefaultTitle_; }
  void SetDefaultTitle(const std::string& title) { DefaultTitle_ = title; }

 private:
  static Color Or(Color colour, Color fallback) { return colour == kNoColor ? fallback : colour; }
  static int16_t Within(int16_t value, int16_t highest, int16_t fallback) {
    return value < 0 || value > highest ? fallback : value;
  }

  Color BackColorBody_ = SystemColor::ButtonFace, BackColorButtons_ = SystemColor::ButtonFace;
  Color BackColorHeading_ = SystemColor::ActiveCaption;
  Color ForeColorBody_ = SystemColor::ButtonText, ForeColorHeading_ = SystemColor::HighlightText;
  int16_t GradientDirection_ = 1, HeadingType_ = 0, TextAlignment_ = kAlignLeft, TimerSeconds_ = 0;
  int16_t StartUpPosition_ = kCentredOnScreen;
  bool GradientPaint_ = false, SolidColorHeading_ = false, Moveable_ = false, KeepOnTop_ = true;
  bool Modal_ = true, SoundBeep_ = true, ControlBox_ = true;
  int32_t Top_ = 0, Left_ = 0;
  std::string DefaultTitle_;
};

inline void MsgBoxProperties::SetGradientDirection(int16_t direction) {
  constexpr int16_t kLast = 16, kFirstPaired = 5;
  if (direction < 1 || direction > kLast) direction = 1;
  if (direction < kFirstPaired)
    GradientDirection_ = direction;
  else
    GradientDirection_ = static_cast<int16_t>(direction % 2 == 1 ? direction + 1 : direction - 1);
}

}  // namespace zelvane

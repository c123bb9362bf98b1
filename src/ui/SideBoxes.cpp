#include "ui/SideBoxes.h"

#include <algorithm>

#include "surface/raster/Bitmap.h"
#include "surface/raster/FailingStep.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr Single kGap = 120, kLine = 90;  // twips
/// As wide as a number box is drawn: what can be typed, and room to read it.
constexpr char kWidestNumber[] = "000 000 000";

bool IsSide(double pixels) {
  return pixels >= 1 && pixels <= kLargestSide;
}

void Tell(const char* text) {
  MsgBox(text, kOkOnly + kExclamationIcon, "Zelvane");
}

}  // namespace

void SideBoxes::Prepare() const {
  for (NumberBox* box : {&txtWidth, &txtHeight}) {
    box->SetFormat("#####0");
    box->SetPositiveOnly(true);
    box->SetMaxValue(kLargestSide);
    box->SetMinValue(1);
    box->SetAccessibleName((box == &txtWidth ? lblWidth : lblHeight).Caption());
  }
}

SideBoxes::Corner SideBoxes::PlaceAt(Single left, Single top, Single row) const {
  const Single names = std::max(lblWidth.NaturalWidth(), lblHeight.NaturalWidth());
  const Single number = lblWidth.TextWidth(kWidestNumber), box = left + names + kGap;
  lblWidth.Move(left, top, names, row);
  txtWidth.Move(box, top, number, row);
  const Single below = top + row + kLine;
  lblHeight.Move(left, below, names, row);
  txtHeight.Move(box, below, number, row);
  return {box + number, below + row};
}

bool SideBoxes::HoldSize() const {
  const bool width = IsSide(txtWidth.Value());
  if (width && IsSide(txtHeight.Value())) return true;
  Tell("The width and the height of an image are 1 to 32,767 pixels.");
  (width ? txtHeight : txtWidth).SetFocus();
  return false;
}

void SideBoxes::TellWantOfMemory() const {
  LackedMemory = false;
  Tell("There is not enough memory for an image of this size.");
  txtWidth.SetFocus();
}

}  // namespace zelvane

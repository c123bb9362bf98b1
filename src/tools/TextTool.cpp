#include "tools/TextTool.h"

#include <sstream>

#include "colour/ColorPanel.h"
#include "imageops/Undo.h"
#include "selection/Selection.h"
#include "surface/raster/FailingStep.h"
#include "tools/NumericOptions.h"
#include "tools/OptionBars.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

/// Text goes on the picture. The press has kept the selection for undoing, and what is undone is the text.
void LeaveSelection(ImageDocument& document) {
  if (!document.SelectArea.Visible()) return;
  DropSelection(document);
  TakeUndoSnapshot(document);
}

/// The caption of the choice begins with a blank. The style stays as it was picked for this document.
void TakeFont(ImageDocument& document) {
  TextFont font = document.Buffer.Font();
  const std::string& chosen = frmControls->lblFont.Caption();
  if (!chosen.empty()) font.Name = chosen.substr(1);
  font.Size = OptionOf(kTextSize).Value;
  document.SetTextFont(font);
}

/// Whichever button is pressed.
void TakeColors(ImageDocument& document) {
  const Color foreground = ColorPanel->SelColor[0].BackColor();
  document.Buffer.SetForeColor(foreground);
  document.TextInput.SetForeColor(foreground);
  document.TextInput.SetBackColor(ColorPanel->SelColor[1].BackColor());
}

/// A place beyond 16 bits leaves the box where it was.
void PlaceBox(const Stroke& stroke) {
  const auto left = Product16(stroke.X, stroke.Z), top = Product16(stroke.Y, stroke.Z);
  if (left && top) stroke.Document.TextInput.Move(*left, *top);
}

void PrintLines(PictureSurface& layer, const std::string& text, Single left) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    layer.SetCurrentX(left);
    layer.Print(line);
  }
}

}  // namespace

/// The box follows the pointer and stays where it was let go; what has been typed goes along.
void TextTool(const Stroke& stroke) {
  LeaveSelection(stroke.Document);
  TakeFont(stroke.Document);
  TakeColors(stroke.Document);
  PlaceBox(stroke);
  stroke.Document.TextInput.SetVisible(true);
  stroke.Document.TextInput.SetFocus();
}

void ApplyText() {
  ImageDocument* document = ActiveDocument();
  if (!document || !document->TextInput.Visible()) return;
  const auto R = static_cast<Single>(100 / document->GetZoomFactor());
  document->Buffer.SetCurrentY(R * document->TextInput.Top());
  PrintLines(document->Buffer, document->TextInput.Text(), R * document->TextInput.Left());
  CancelText(*document);
  RefreshPaintArea(document->Buffer);
}

void CancelText(ImageDocument& document) {
  if (!document.TextInput.Visible()) return;
  document.TextInput.SetText("");
  document.TextInput.SetVisible(false);
  document.PaintArea.SetFocus();
}

}  // namespace zelvane

#include "document/layers/ImageDocument.h"

#include <stdexcept>

#include "shell/state/Settings.h"

namespace zelvane {
namespace {

using Kind = PictureSurface::Kind;
using Frame = PictureSurface::Frame;
using Shape = ShapeOverlay::Shape;
using Style = ShapeOverlay::Style;

constexpr int16_t kScrollStep = 24;  // units of the view

MdiForm& Owner() {
  if (MdiForm* main = MdiForm::Main()) return *main;
  throw std::logic_error("a document needs the main window");
}

/// What a layer holds until a picture comes: the desktop's colours for windows.
void SetFirstColors(PictureSurface& layer) {
  layer.SetBackColor(SystemColor::WindowBackground);
  layer.SetForeColor(SystemColor::WindowText);
}

}  // namespace

ImageDocument::ImageDocument()
    : MdiChild("frmPaint", Owner()),
      Back(*this, "Back", Panel::Face::Ground),
      PaintArea(Back, "PaintArea"),
      Buffer(*this, "Buffer", Frame::Yes, Kind::Layer),
      BufferSelected(*this, "BufferSelected", Frame::No, Kind::Layer),
      SelectedBack(*this, "SelectedBack", Frame::No, Kind::Layer),
      Undo(*this, "Undo", Frame::Yes, Kind::Layer),
      TextInput(PaintArea, "TextInput"),
      lblTextSize(PaintArea, "lblTextSize", "M"),
      SelectArea(PaintArea, Shape::Rectangle, Style::Dotted),
      CropArea(PaintArea, Shape::Rectangle, Style::Dotted),
      DrawBox(PaintArea, Shape::Rectangle),
      DrawCircle(PaintArea, Shape::Oval),
      BrushOutline(PaintArea),
      FollowLine(PaintArea),
      Temp(PaintArea),
      Temp2(PaintArea),
      HScroll1(*this, "HScroll1", ScrollBar::Direction::Horizontal),
      VScroll1(*this, "VScroll1", ScrollBar::Direction::Vertical) {
  SetCaption("Untitled");
  for (PictureSurface* layer : {&Buffer, &BufferSelected, &SelectedBack, &Undo}) SetFirstColors(*layer);
  PaintArea.SetAccessibleName("Picture");
  PaintArea.SetSource(&Buffer, 1);
  TextInput.SetVisible(false);
  TextInput.SetAccessibleName("Text");

  OnResize = [this] { Form_Resize(); };
  for (ScrollBar* bar : {&HScroll1, &VScroll1}) {
    bar->SetSmallChange(kScrollStep);
    bar->OnGotFocus = [this] { PaintArea.Refresh(), PaintArea.SetFocus(); };
  }
  HScroll1.OnChange = HScroll1.OnScroll = [this] { HScroll1_Change(); };
  VScroll1.OnChange = VScroll1.OnScroll = [this] { VScroll1_Change(); };
  TextInput.OnChange = [this] { TextInput_Change(); };
}

void ImageDocument::ShowCaption() {
  SetCaption(Tag() + " - " + PlainText(Zoom) + "%");
}

void ImageDocument::SetTextFont(const TextFont& font) {
  Buffer.SetFont(font);
  TextInput.SetFont(Buffer.Font(), ZoomMultiple());
  lblTextSize.SetFont(Buffer.Font(), ZoomMultiple());
  TextInput_Change();
}

/// Whatever changes the text, be it a key, an input method or the clipboard.
void ImageDocument::TextInput_Change() {
  lblTextSize.SetCaption(TextInput.ShownText() + "M");
  TextInput.SetOverhang(lblTextSize.Overhang());
  TextInput.SetWidth(lblTextSize.Width());
  TextInput.SetHeight(lblTextSize.Height());
}

ImageDocument* ActiveDocument() {
  const MdiForm* main = MdiForm::Main();
  return main ? dynamic_cast<ImageDocument*>(main->ActiveForm()) : nullptr;
}

ImageDocument* DocumentAtRest() {
  ImageDocument* document = ActiveDocument();
  return document && !document->Down ? document : nullptr;
}

ImageDocument& DocumentOf(PictureSurface& layer) {
  return dynamic_cast<ImageDocument&>(*layer.Parent());
}

}  // namespace zelvane

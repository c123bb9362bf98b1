#include "document/window/MakeDocument.h"

#include <utility>

#include "surface/raster/Units.h"

namespace zelvane {
namespace {

frmPaint& NamedDocument(const DocumentName& name) {
  auto* document = new frmPaint;
  document->SetTag(name.title);
  document->Buffer.SetTag(name.path);
  document->ShowCaption();
  return *document;
}

/// The window is as large as its picture and its bars, as far as the main window has room.
void FitWindow(ImageDocument& document) {
  document.SetWidth((document.PaintArea.Width() + document.VScroll1.Width()) * kTwipsPerPixel);
  document.SetHeight((document.PaintArea.Height() + document.HScroll1.Height()) * kTwipsPerPixel);
}

/// The window comes up with its picture, so that nobody sees an empty one.
void ShowWindow(ImageDocument& document, const std::optional<DocumentPlace>& place) {
  document.SizePaintArea();
  FitWindow(document);
  if (place) {
    document.SetLeft(place->left);
    document.SetTop(place->top);
  }
  document.Show();
  document.Form_Resize();
  RefreshPaintArea(document.Buffer);
  document.PaintArea.SetFocus();
}

}  // namespace

frmPaint& MakeDocument(Bitmap picture, const DocumentName& name, const std::optional<DocumentPlace>& place) {
  frmPaint& document = NamedDocument(name);
  document.Buffer.SetPicture(std::move(picture));
  ShowWindow(document, place);
  return document;
}

frmPaint& MakeDocument(int width, int height, Color background, const DocumentName& name) {
  Bitmap blank = Bitmap::Uninitialised(width, height);
  frmPaint& document = NamedDocument(name);
  document.Buffer.SetPicture(std::move(blank));
  document.Buffer.SetBackColor(background);
  ShowWindow(document, std::nullopt);
  return document;
}

}  // namespace zelvane

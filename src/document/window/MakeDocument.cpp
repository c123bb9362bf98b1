#include "document/window/MakeDocument.h"

#include <utility>

namespace zelvane {
namespace {

frmPaint& NamedDocument(const DocumentName& name) {
  auto* document = new frmPaint;
  document->SetTag(name.title);
  document->Buffer.SetTag(name.path);
  document->ShowCaption();
  return *document;
}

/// The window comes up with its picture, so that nobody sees an empty one.
void ShowWindow(ImageDocument& document, const std::optional<DocumentPlace>& place) {
  document.SizePaintArea();
  document.SetWidth(document.FittingWidth());
  document.SetHeight(document.FittingHeight());
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

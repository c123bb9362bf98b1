#include "surface/forms/windows/MdiForm.h"

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/windows/MdiFrame.h"

namespace zelvane {

MdiForm::MdiForm(const std::string& name) : Form(name, new MdiFrame) {
  frame_ = static_cast<MdiFrame*>(Widget());
  frame_->Serve(*this);
  frame_->OnActiveChanged = [this] { FireEvent(OnActiveFormChanged); };
  frame_->OnFilesDropped = [this](const std::vector<std::string>& paths) {
    FireEvent(OnFilesDropped, paths);
  };
  engine_->SetRoom(*frame_->Field().Children().viewport());
  main_ = this;
}

MdiForm::~MdiForm() {
  if (main_ == this) main_ = nullptr;
}

MdiForm* MdiForm::Main() {
  return main_ && !main_->unloading_ ? main_ : nullptr;
}

Form* MdiForm::ActiveForm() const {
  return frame_->Active();
}

std::vector<Form*> MdiForm::Children() const {
  std::vector<Form*> children;
  for (Form* form : Forms()) {
    if (form->engine_->Main() == this) children.push_back(form);
  }
  return children;
}

void MdiForm::Arrange(int16_t arrangement) {
  ChildArea& area = frame_->Field().Children();
  if (arrangement == kCascade) {
    area.Cascade();
  } else {
    area.Tile(arrangement == kTileVertical);
  }
}

void MdiForm::Dock(Control& panel, Align align) {
  if (panel.Widget()) frame_->Field().Dock(panel, *panel.Widget(), align);
}

MdiChild::MdiChild(const std::string& name, MdiForm& main) : Form(name, *main.frame_) {}

void MdiChild::Fit(Single width, Single height) {
  if (Widget()) engine_->Fit(width, height);
}

}  // namespace zelvane

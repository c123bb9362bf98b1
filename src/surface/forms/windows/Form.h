#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "surface/forms/controls/Control.h"

namespace zelvane {

enum WindowStates : int16_t { kNormal = 0, kMinimised = 1, kMaximised = 2 };
/// Why a window is asked to go.
enum UnloadModes : int16_t { kUnloadByUser = 0, kUnloadByCode = 1 };

class ChildHost;

/// A window: a top-level one, or a child inside the main window.
///
/// A form is made by `new`, is in the list of all forms from then on, and belongs to the engine: `Unload`
/// takes it out of the list at once and destroys it once no event handler is running. Its size and place are
/// in twips: the size of its inside, and the place of its frame on the screen, or in the main window for a
/// child. They follow what the user does to the window.
class Form : public Control {
 public:
  /// A top-level window; with an owner it stays above it.
  Form(const std::string& name, Form* owner = nullptr);
  ~Form() override;

  void SetWidth(Single width) override;
  void SetHeight(Single height) override;
  /// The smallest size that the user can give a window, in twips.
  void SetMinimumSize(Single width, Single height);
  /// A form that isn't enabled takes no input and can't be closed by the user. Forms that it owns stay
  /// enabled.
  void SetEnabled(bool enabled) override;

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  int16_t WindowState() const;
  void SetWindowState(int16_t state);
  /// The form's `OnKeyDown` sees keys before the control that has the focus.
  void SetKeyPreview(bool preview) { key_preview_ = preview; }

  /// The inside, in the unit of `ScaleMode`.
  Single ScaleWidth() const;
  Single ScaleHeight() const;

  /// Shows the form; one that is shown already is activated. A child without a size gets one that suits.
  void Show();
  void Hide();
  void SetVisible(bool visible) override { visible ? Show() : Hide(); }
  /// Asks `OnQueryUnload`; false where it refused, and the form stays. The main window asks the children that
  /// are left as well, and takes them along. Asking while the form is being asked is refused.
  bool Unload(UnloadModes mode = kUnloadByCode);
  /// Shows the window on top and gives it the keyboard; a minimised one is restored.
  void Activate();

  /// A child is activated when it becomes the main window's active form, a top-level window when it gets the
  /// keyboard. `Width` and `Height` are the new ones when `OnResize` comes.
  std::function<void()> OnActivate, OnDeactivate, OnResize, OnPaint;
  std::function<void(bool& Cancel, UnloadModes UnloadMode)> OnQueryUnload;
  /// The form is going; it's no longer in the list of forms.
  std::function<void()> OnUnload;

 protected:
  Form(const std::string& name, QWidget* widget);
  /// A window inside the main one.
  Form(const std::string& name, ChildHost& main);
  void Place() override;
  bool PreviewsKeys() const override { return key_preview_; }
  /// The main window outlives the others.
  virtual bool IsMain() const { return false; }

 private:
  friend class MdiForm;
  friend class MdiChild;
  friend class MdiFrame;
  template <class Window>
  friend class SingleWindow;
  friend void DestroyForms();
  class Engine;
  bool MayGo(UnloadModes mode);
  void Go();
  std::vector<Form*> Dependants() const;
  std::unique_ptr<Engine> engine_;
  std::string caption_;
  bool key_preview_ = false;
  bool unloading_ = false, being_asked_ = false;
  std::function<void()> released_;
};

/// All loaded forms, in the order of their making.
const std::vector<Form*>& Forms();

/// Unloads and destroys every form that is left, the main window last, and ends the run. Nothing is asked.
void DestroyForms();
/// How many runs have ended.
int EndedRuns();

/// A window was asked for after its end. Whoever asks comes too late: a failing step.
struct WindowGone : std::logic_error {
  WindowGone() : logic_error("the window has gone") {}
};

/// A window of which there is one: made at first use, reached by its name, `MainForm->Show()`. Once it has
/// been unloaded it's gone for that run, so that no late event brings it back; asking throws `WindowGone`.
/// What opens a window again and again says so: `frmAbout.Load().Show()`.
template <class Window>
class SingleWindow {
 public:
  Window* operator->() { return &**this; }
  Window& operator*() {
    if (!window_ && gone_in_ == EndedRuns()) throw WindowGone();
    return Load();
  }
  /// The window, made anew where it has gone.
  Window& Load() {
    if (!window_) {
      window_ = new Window;
      window_->released_ = [this] { window_ = nullptr, gone_in_ = EndedRuns(); };
    }
    return *window_;
  }
  bool IsLoaded() const { return window_ != nullptr; }

 private:
  Window* window_ = nullptr;
  int gone_in_ = -1;
};

}  // namespace zelvane

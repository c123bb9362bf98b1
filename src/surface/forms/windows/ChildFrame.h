#pragma once

#include <QMdiSubWindow>
#include <functional>

namespace zelvane {

class Form;

/// A child's frame: title bar and edges. While it fills the main window it bears no title of its own: the
/// toolkit would write it into the main window's, by which other programs find that window.
class ChildFrame : public QMdiSubWindow {
 public:
  explicit ChildFrame(Form& form);
  Form& Served() const { return form_; }

  /// A title that is too long for the bar loses its beginning, so that a file's name stays.
  const QString& Caption() const { return caption_; }
  void SetCaption(const QString& caption);
  /// How wide the frame has to be for the whole caption.
  int WidthForCaption() const;

  /// The size with its frame, in the normal state.
  QSize WithFrame(QSize inside) const { return inside.grownBy(contentsMargins()); }
  /// Brings the inside to the size of the frame at once, also while it's hidden.
  void LayOut();

  /// The caption has changed, or whether the frame fills the main window.
  std::function<void()> OnTitleChanged;
  std::function<void()> OnMinimised;
  /// Tab, or with false Shift and Tab, leads on from what has the keyboard; whether it has led anywhere.
  std::function<bool(bool next)> OnTab;

 protected:
  bool focusNextPrevChild(bool next) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ConfineSystemMenu();
  void ShowTitle();
  int RoomForTitle(int width) const;
  QFontMetrics TitleMetrics() const;

  Form& form_;
  QString caption_;
};

/// Has assistive tools call children by their captions, also where these aren't shown.
void InstallChildNames();

}  // namespace zelvane

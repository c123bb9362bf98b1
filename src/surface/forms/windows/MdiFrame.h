#pragma once

#include <QDropEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <functional>
#include <string>
#include <vector>

#include "surface/forms/windows/FormEngine.h"
#include "surface/forms/windows/MdiArea.h"

namespace zelvane {

/// The menu bar. Beside its menus it tells the caption of a child that fills the main window.
class CaptionBar : public QMenuBar {
 public:
  using QMenuBar::QMenuBar;
  void SetCaption(const QString& caption);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString caption_;
};

/// The main window's widget: the menu bar, and the field with the panels and the children.
class MdiFrame : public QMainWindow, public ChildHost {
 public:
  MdiFrame();
  void Serve(Form& form) { form_ = &form; }

  CaptionBar& Bar() { return *bar_; }
  DockField& Field() { return *field_; }
  Form* Active() const { return active_; }
  /// Another child became the active one, or the last one went.
  std::function<void()> OnActiveChanged;
  std::function<void(const std::vector<std::string>& Paths)> OnFilesDropped;

  Form& Main() override { return *form_; }
  ChildFrame* AddChild(Form& child, QWidget& inside) override;
  void PlaceChild(ChildFrame& child, QSize inside, bool keeps_place) override;
  void HoldActivation(bool hold) override { holding_ = hold; }
  void ActivateChild(Form& child) override;
  void LeaveChild(Form& child) override;
  void RemoveChild(Form& child) override;
  void FitChild(ChildFrame& child, QSize inside) override;
  void SetChildCaption(ChildFrame& child, const QString& caption) override;

 protected:
  bool focusNextPrevChild(bool next) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override { TakeCopies(*event); }
  void dropEvent(QDropEvent* event) override;

 private:
  void TakeCopies(QDropEvent& event) const;
  void Minimised(const Form& child);
  QWidget* KeyReceiverOfChildren() const;
  Form* NextTo(const Form& child) const;
  void Activated(QMdiSubWindow* window);
  void ShowActive();
  void SetActive(Form* child);
  void TellCaption();

  Form* form_ = nullptr;
  CaptionBar* bar_;
  DockField* field_;
  Form* active_ = nullptr;
  bool holding_ = false;
};

}  // namespace zelvane

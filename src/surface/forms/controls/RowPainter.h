#pragma once

#include <QStyledItemDelegate>
#include <string>

namespace zelvane {

/// Paints the rows of a list or tree: each on one line, behind one drawn icon that is sharp at every scale. A
/// text too long for its row shows whole as a tooltip.
class RowPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  /// Empty for none; 16 logical pixels square.
  void SetIcon(const std::string& icon) { icon_ = icon; }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 private:
  std::string icon_;
};

}  // namespace zelvane

#include "surface/forms/controls/RowPainter.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

#include "surface/forms/controls/IconArt.h"
#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

constexpr int kIconSide = 16;

bool IsElided(const QStyleOptionViewItem& row) {
  const QStyle& style = *row.widget->style();
  const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &row, row.widget) + 1;
  const QRect place = style.subElementRect(QStyle::SE_ItemViewItemText, &row, row.widget);
  return row.fontMetrics.horizontalAdvance(row.text) > place.width() - 2 * margin;
}

}  // namespace

void RowPainter::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->text = OneLine(option->text);
  if (icon_.empty()) return;
  const QPixmap drawing = IconArt(icon_, kIconSide, option->widget->devicePixelRatioF());
  option->icon = QIcon(drawing);
  // The toolkit would tint the icon of the selected row.
  option->icon.addPixmap(drawing, QIcon::Selected);
  option->decorationSize = QSize(kIconSide, kIconSide);
  option->features |= QStyleOptionViewItem::HasDecoration;
}

bool RowPainter::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                           const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid())
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  QStyleOptionViewItem row = option;
  initStyleOption(&row, index);
  // As marked up text it's broken into lines, and nothing in the name is taken for mark-up.
  const QString whole = "<p>" + row.text.toHtmlEscaped() + "</p>";
  QToolTip::showText(event->globalPos(), IsElided(row) ? whole : QString(), view->viewport());
  return true;
}

}  // namespace zelvane

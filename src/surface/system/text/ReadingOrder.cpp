#include "surface/system/text/ReadingOrder.h"

#include <QCollator>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "surface/system/text/QtText.h"

namespace zelvane {

namespace {

QCollator ReadersCollator() {
  // Without a language the toolkit orders by codes.
  const QLocale locale = QLocale().collation();
  QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  return collator;
}

}  // namespace

void SortForReading(std::vector<std::string>& names) {
  // Comparing the texts themselves would take several times as long.
  const QCollator collator = ReadersCollator();
  std::vector<std::pair<QCollatorSortKey, std::string>> keyed;
  keyed.reserve(names.size());
  for (std::string& name : names) {
    QCollatorSortKey key = collator.sortKey(ToQt(name));
    keyed.emplace_back(std::move(key), std::move(name));
  }
  std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
    const int order = a.first.compare(b.first);
    return order != 0 ? order < 0 : a.second < b.second;
  });
  std::transform(keyed.begin(), keyed.end(), names.begin(),
                 [](auto& pair) { return std::move(pair.second); });
}

}  // namespace zelvane

#include <fstream>
#include <iostream>
#include <string>

#include "colour/SwatchRows.h"
#include "components/DataStore.h"
#include "shell/state/DataFile.h"
#include "surface/system/files/Files.h"

using namespace zelvane;

namespace {

/// A line is "RRGGBB Name".
std::vector<std::string> Rows(std::istream& lines) {
  constexpr int kHexadecimal = 16, kByte = 0xFF;
  std::vector<std::string> rows;
  for (std::string line; std::getline(lines, line);) {
    size_t end = 0;
    const int rgb = std::stoi(line, &end, kHexadecimal);
    rows.push_back(SwatchRow({RGB(rgb >> 16 & kByte, rgb >> 8 & kByte, rgb & kByte), line.substr(end + 1)}));
  }
  return rows;
}

}  // namespace

/// make_template SWATCHES FILE: makes the data file that a first start begins with.
int main(int count, char** words) {
  if (count != 3) return 2;
  std::ifstream lines(words[1]);
  DeleteFile(words[2]);
  const auto store = DataStore::Create(words[2], kDataPassword);
  const auto choose = [&](const auto&) { return Rows(lines); };
  const std::string reason =
      lines && store ? store->AddTexts(kSwatchTable, kSwatchField, choose) : "a file can't be opened";
  if (!reason.empty()) std::cerr << "make_template: " << reason << '\n';
  return reason.empty() ? 0 : 1;
}

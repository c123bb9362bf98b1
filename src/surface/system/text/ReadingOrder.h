#pragma once

#include <string>
#include <vector>

namespace zelvane {

/// Sorts names as the user's language does, whatever the letters' case: "file2" before "File10". Names that
/// read the same are in the order of their bytes.
void SortForReading(std::vector<std::string>& names);

}  // namespace zelvane

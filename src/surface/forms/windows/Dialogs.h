#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// The desktop's file dialogs. `filter` is pairs of a text and its patterns, all parted by "|". An empty
/// result means cancelled. `filter_index` counts from 0 and holds the choice on return, cancelled or not.
std::string AskOpenName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index);
std::string AskSaveName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index);

}  // namespace zelvane

#pragma once

#include <string>
#include <vector>

namespace zelvane {

/// The files that a list of addresses (text/uri-list) names, in its order. Those on this machine as the paths
/// that they are, byte for byte; any other address as it stands, which is the path of no file.
std::vector<std::string> DroppedFiles(const std::string& list);

}  // namespace zelvane

#pragma once

#include "document/layers/ImageDocument.h"

namespace zelvane {

/// Asks what is to become of a changed picture, and saves it where that is the answer. False: the document
/// stays.
bool MayClose(ImageDocument& document);

}  // namespace zelvane

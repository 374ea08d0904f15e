#pragma once

#include "reports/engine/ReportLayout.h"
#include "store/ShapedSet.h"

namespace qinghe {

/// Opens the report on the data in a preview window of its own that blocks nothing: pages, zoom,
/// print, export. Its `objectName` is the report's name, its title begins with the caption.
void showReport(const ReportLayout& layout, const ShapedSetPtr& data);

}  // namespace qinghe

#pragma once

#include <QString>

#include "forms/TreeView.h"

namespace qinghe {

/// Asks the portal for the categories of the own industry below a category (0 for the top) and adds
/// them below `parent`: key id + " XID". False on failure, without a word; what came stays.
bool addCategories(TreeView& tree, TreeNode& parent, double categoryId, const QString& tag);

}  // namespace qinghe

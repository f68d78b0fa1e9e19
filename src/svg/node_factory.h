#pragma once

#include "svg/status.h"

namespace tinyxml2 {
class XMLElement;
}

namespace quor {

class TreeResources;
class SvgNode;

/// Builds the node of an element and the nodes below it. `node` is null for an element that is
/// dropped with its subtree, and on failure, when everything built so far is destroyed.
Status buildNode(TreeResources& resources, tinyxml2::XMLElement& element, SvgNode*& node) noexcept;

}  // namespace quor

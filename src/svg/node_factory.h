#pragma once

#include "svg/status.h"

namespace tinyxml2 {
class XMLElement;
}

namespace quor {

class SvgDocument;
class SvgNode;

/// Builds the node of an element and the nodes below it. `node` is null for an element that is
/// dropped with its subtree, and on failure, when everything built so far is destroyed.
Status buildNode(SvgDocument& document, tinyxml2::XMLElement& element, SvgNode*& node) noexcept;

/// The node that a reference names: one leading '#' removed, cut at the first ')',
/// white space and quotes at its end left out. Null when there
/// is none.
SvgNode* findReference(const SvgDocument& document, const char* reference) noexcept;

}  // namespace quor

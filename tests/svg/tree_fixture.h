#pragma once

#include <tinyxml2.h>

#include <memory>
#include <string>
#include <vector>

#include "svg/node.h"
#include "svg/node_factory.h"
#include "svg/tree_resources.h"

namespace quor {

/// A text with the tree built from it. The screen is 300 x 400 pixels at 90 dots per inch.
class SvgTree {
public:
    explicit SvgTree(const std::string& text) {
        messages().clear();
        if (xml_.Parse(text.c_str()) != tinyxml2::XML_SUCCESS) return;
        if (!resources.initialize()) return;
        SvgNode* built = nullptr;
        status = buildNode(resources, *xml_.FirstChildElement(), built);
        root.reset(built);
    }

    /// The node of the id as a T; null when there is none or it is of another class.
    template <class T = SvgNode>
    T* find(const std::string& id) const {
        return dynamic_cast<T*>(resources.ids.find(id.c_str(), id.size()));
    }

    /// What was sent to the log since the latest tree was begun.
    static std::vector<std::string>& messages() {
        static std::vector<std::string> sent;
        return sent;
    }

private:
    // The nodes point into the document and the texts, so they go first.
    tinyxml2::XMLDocument xml_;
    ScreenParameters screen_{300, 400, 90.0F,
                             [](const char* message) { messages().emplace_back(message); }};

public:
    TreeResources resources{screen_};
    std::unique_ptr<SvgNode> root;
    Status status = Status::kParser;
};

inline std::vector<SvgNode*> childrenOf(const SvgNode& node) {
    std::vector<SvgNode*> children;
    for (SvgNode* child : node.children()) children.push_back(child);
    return children;
}

/// The text inside an `svg` element with a viewport of 300 x 400.
inline std::string inSvg(const std::string& content) {
    return "<svg viewBox='0 0 300 400'>" + content + "</svg>";
}

}  // namespace quor

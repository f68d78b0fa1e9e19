#include "info_command.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <sstream>

#include "each_input.h"
#include "element_walk.h"
#include "input_file.h"
#include "library_error.h"
#include "passed_over.h"
#include "picture_size.h"
#include "rejected_document.h"
#include "session.h"
#include "terminal.h"

namespace tool {

namespace {

constexpr std::size_t kMostIds = 40;  // that are listed

struct Contents {
    std::map<std::string, int> elements;  ///< how many of each name
    std::vector<std::string> ids;
};

Contents contentsOf(const std::string& text) {
    Contents contents;
    tinyxml2::XMLDocument xml;
    if (xml.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) return contents;
    const tinyxml2::XMLElement* root = xml.RootElement();
    for (const auto* element = root; element != nullptr; element = nextElement(element, root)) {
        ++contents.elements[element->Name()];
        const char* id = element->Attribute("id");
        if (id != nullptr) contents.ids.push_back(id);
    }
    return contents;
}

void printRow(const char* name, const std::string& value) {
    std::printf("  %s %s\n", styled(stdout, Style::kDim, name).c_str(), value.c_str());
}

template <class... Parts>
std::string joined(const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

std::string sideText(float side) { return side < 0 ? "not given" : joined(side, " px"); }

void printSize(const Document& document) {
    float viewport[4];  // x, y, width, height
    requireSuccess(quorDocViewportGet(document.get(), viewport));
    const DocumentSize size{quorDocWidth(document.get()), quorDocHeight(document.get()),
                            viewport[2], viewport[3]};
    printRow("size        ", joined("width ", sideText(static_cast<float>(size.width)), ", height ",
                                    sideText(static_cast<float>(size.height))));
    printRow("shows       ", joined("x ", viewport[0], ", y ", viewport[1], ", width ", viewport[2],
                                    ", height ", viewport[3], " (--region)"));
    try {
        const PictureSize picture = choosePictureSize({}, size);
        printRow("picture     ", joined(picture.width, " x ", picture.height, " pixels"));
    } catch (const FileError& error) {
        printRow("picture     ", error.what());
    }
}

void printContents(const std::string& text) {
    const Contents contents = contentsOf(text);
    int count = 0;
    std::string names;
    for (const auto& [name, number] : contents.elements) {
        count += number;
        names += (names.empty() ? "" : ", ") + joined(number, " ", name);
    }
    printRow("elements    ", joined(count, ": ", names));
    if (contents.ids.empty()) return;
    std::string ids;
    for (std::size_t i = 0; i < std::min(contents.ids.size(), kMostIds); ++i)
        ids += (ids.empty() ? "" : " ") + contents.ids[i];
    if (contents.ids.size() > kMostIds)
        ids += joined(" and ", contents.ids.size() - kMostIds, " more");
    printRow("ids         ", joined(ids, " (--element)"));
}

void printPassedOver(const std::string& text) {
    const std::vector<PassedOver> parts = findPassedOver(text);
    if (parts.empty()) return printRow("not drawn   ", "nothing: all of it is drawn");
    for (const PassedOver& part : parts) {
        const std::string times = part.count > 1 ? joined(" (", part.count, " times)") : "";
        printRow("not drawn   ", styled(stdout, Style::kYellow, part.name) +
                                     joined(" on line ", part.line, times, ": ", part.advice));
    }
}

void printFile(const std::string& path) {
    const std::string text = readInputText(path);
    const Document document(quorDocCreate(text.c_str()));
    if (!document.isValid()) throw explainRejectedDocument(text);
    std::printf("%s\n", styled(stdout, Style::kBold, displayName(path)).c_str());
    printSize(document);
    printContents(text);
    printPassedOver(text);
}

}  // namespace

bool printInfo(const std::vector<std::string>& inputs) {
    const Session session(kDefaultSide, kDefaultSide, 96);
    return forEachInput(inputs, [&](const std::string& path) {
        requireSuccess(session.error());
        printFile(path);
    });
}

}  // namespace tool

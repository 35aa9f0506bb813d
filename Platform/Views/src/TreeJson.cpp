#include <TimeAndText/Text.h>
#include <Views/Painters.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace platform {

namespace {

/// A thousandth of a point is exact enough and keeps sums of widths readable.
JsonValue number(double value) {
    const double rounded = std::round(value * 1000) / 1000;
    if (rounded == std::round(rounded)) return JsonValue(static_cast<std::int64_t>(rounded));
    return JsonValue(rounded);
}

JsonValue frameJson(const Rect& frame) {
    return JsonValue(
        JsonValue::Array{number(frame.x), number(frame.y), number(frame.width), number(frame.height)});
}

/// "#RRGGBB", with alpha appended when the colour is not opaque.
std::string colorText(Color color, double opacity) {
    std::string text = color.hexString();
    const double alpha = color.alpha * opacity;
    if (alpha >= 1) return text;
    std::array<char, 4> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X",
                  static_cast<unsigned>(std::lround(alpha * 255)) & 0xFFU);
    return text + digits.data();
}

JsonValue nodeJson(const LaidOutNode& node) {
    JsonValue json = JsonValue::object();
    json.set("kind", nameOf(node.kind));
    json.set("frame", frameJson(node.frame));
    const bool isText = node.kind == LaidOutNode::Kind::text || node.kind == LaidOutNode::Kind::timer;
    if (isText || !node.text.empty()) json.set("text", node.text);
    if (isText) {
        json.set("lines", node.lines);
        json.set("truncated", node.isTruncated);
        json.set("font", node.font.description());
        if (!node.truncatedText.empty()) json.set("drawn", node.truncatedText);
        if (node.textScale < 1) json.set("textScale", number(node.textScale));
    }
    if (node.timerTarget) json.set("target", formatRfc3339(*node.timerTarget));
    if (node.kind == LaidOutNode::Kind::progress) json.set("fraction", number(node.fraction));
    if (node.color) json.set("color", colorText(*node.color, node.opacity));
    if (node.url) json.set("url", node.url->absoluteString());
    if (!node.label.empty()) json.set("label", node.label);
    if (!node.children.empty()) {
        JsonValue children = JsonValue::array();
        for (const auto& child : node.children)
            children.append(nodeJson(child));
        json.set("children", std::move(children));
    }
    return json;
}

}  // namespace

JsonValue treeJson(const LaidOutTree& tree) {
    JsonValue links = JsonValue::array();
    for (const auto& link : tree.links()) {
        JsonValue json = JsonValue::object();
        json.set("url", link.url.absoluteString());
        json.set("label", link.label);
        json.set("frame", frameJson(link.frame));
        links.append(std::move(json));
    }
    JsonValue json = JsonValue::object();
    json.set("family", nameOf(tree.family));
    json.set("width", number(tree.size.width));
    json.set("height", number(tree.size.height));
    json.set("tree", nodeJson(tree.root));
    json.set("links", std::move(links));
    return json;
}

std::string treeText(const LaidOutTree& tree) {
    std::string text;
    for (const auto& line : tree.texts())
        text += trimmed(line) + "\n";
    return text;
}

}  // namespace platform

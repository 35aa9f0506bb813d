#include <Views/LaidOutTree.h>

#include "TimerText.h"

#include <algorithm>

namespace platform {

namespace {

bool isText(const LaidOutNode& node) {
    return node.kind == LaidOutNode::Kind::text || node.kind == LaidOutNode::Kind::timer;
}

template <class Visit>
void visitAll(const LaidOutNode& node, const Visit& visit) {
    visit(node);
    for (const auto& child : node.children)
        visitAll(child, visit);
}

/// Texts below `node` but not those of links inside it.
void collectLabel(const LaidOutNode& node, std::string& label) {
    for (const auto& child : node.children) {
        if (child.kind == LaidOutNode::Kind::link) continue;
        if (isText(child) && !child.isAccessibilityHidden && !child.text.empty()) {
            if (!label.empty()) label += ", ";
            label += child.text;
        }
        collectLabel(child, label);
    }
}

/// The first timer below `node` but not of links inside it; its text is not in any label.
std::string timerTextOf(const LaidOutNode& node) {
    for (const auto& child : node.children) {
        if (child.kind == LaidOutNode::Kind::link) continue;
        if (child.kind == LaidOutNode::Kind::timer && !child.isAccessibilityHidden) return child.text;
        if (auto text = timerTextOf(child); !text.empty()) return text;
    }
    return {};
}

std::string labelOf(const LaidOutNode& link) {
    if (!link.label.empty()) {
        const std::string time = timerTextOf(link);
        return time.empty() ? link.label : time + ". " + link.label;
    }
    std::string label;
    collectLabel(link, label);
    return label;
}

void collectElements(const LaidOutNode& node, bool isInsideLink, std::vector<AccessibleElement>& elements) {
    using Role = AccessibleElement::Role;
    const bool isLink = node.kind == LaidOutNode::Kind::link;
    if (isLink) {
        elements.push_back({node.url ? Role::link : Role::inactiveLink, labelOf(node), node.frame, node.url});
    } else if (!node.label.empty()) {
        elements.push_back({Role::image, node.label, node.frame, std::nullopt});
    } else if (isText(node) && !isInsideLink && !node.isAccessibilityHidden && !node.text.empty()) {
        elements.push_back({Role::text, node.text, node.frame, std::nullopt});
    }
    for (const auto& child : node.children)
        collectElements(child, isInsideLink || isLink, elements);
}

}  // namespace

std::string_view nameOf(LaidOutNode::Kind kind) {
    switch (kind) {
        case LaidOutNode::Kind::column:
            return "column";
        case LaidOutNode::Kind::row:
            return "row";
        case LaidOutNode::Kind::layers:
            return "layers";
        case LaidOutNode::Kind::text:
            return "text";
        case LaidOutNode::Kind::timer:
            return "timer";
        case LaidOutNode::Kind::symbol:
            return "symbol";
        case LaidOutNode::Kind::picture:
            return "picture";
        case LaidOutNode::Kind::photo:
            return "photo";
        case LaidOutNode::Kind::shape:
            return "shape";
        case LaidOutNode::Kind::progress:
            return "progress";
        case LaidOutNode::Kind::link:
            return "link";
    }
    return {};
}

std::vector<TapTarget> LaidOutTree::links() const {
    std::vector<TapTarget> targets;
    visitAll(root, [&](const LaidOutNode& node) {
        if (node.url) targets.push_back({*node.url, labelOf(node), node.frame});
    });
    return targets;
}

std::vector<AccessibleElement> LaidOutTree::accessibleElements() const {
    std::vector<AccessibleElement> elements;
    collectElements(root, false, elements);
    return elements;
}

std::optional<TapTarget> LaidOutTree::linkAt(Point point) const {
    const auto targets = links();
    const auto found = std::find_if(targets.rbegin(), targets.rend(), [point](const TapTarget& target) {
        return target.frame.contains(point);
    });
    return found == targets.rend() ? std::nullopt : std::optional(*found);
}

std::vector<std::string> LaidOutTree::texts() const {
    std::vector<const LaidOutNode*> nodes;
    visitAll(root, [&](const LaidOutNode& node) {
        if (isText(node) && !node.text.empty()) nodes.push_back(&node);
    });
    const auto leadingEdge = [this](const LaidOutNode* node) {
        return isRightToLeft ? -node->frame.right() : node->frame.x;
    };
    std::stable_sort(nodes.begin(), nodes.end(), [&](const LaidOutNode* a, const LaidOutNode* b) {
        if (a->frame.y != b->frame.y) return a->frame.y < b->frame.y;
        return leadingEdge(a) < leadingEdge(b);
    });
    std::vector<std::string> texts;
    for (const auto* node : nodes)
        texts.push_back(node->text);
    return texts;
}

std::optional<Date> LaidOutTree::nextTick(Date now) const {
    std::optional<Date> next;
    visitAll(root, [&](const LaidOutNode& node) {
        if (!node.timerTarget) return;
        const Date change = nextTimerChange(*node.timerTarget, now);
        if (!next || change < *next) next = change;
    });
    return next;
}

}  // namespace platform

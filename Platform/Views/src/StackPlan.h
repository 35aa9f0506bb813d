#pragma once

#include "ViewNode.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

namespace platform {

/// Gaps and extents of a stack's children for one proposal.
struct StackPlan {
    std::vector<double> gaps;
    std::vector<Extent> children;
    double length = 0;
};

/// Plans of one layout. Every step asks a stack several times for the same proposal; without remembering,
/// the work would multiply with each level of nesting.
class StackPlanCache {
  public:
    struct Key {
        const ViewNode* stack = nullptr;
        std::optional<double> width;
        std::optional<double> height;
        // What the extents of texts and symbols depend on.
        Font font;
        int lineLimit = 0;
        double minimumScaleFactor = 1;
        bool allowsTightening = false;
        bool isResizable = false;

        friend bool operator==(const Key&, const Key&) = default;
    };

    const StackPlan* find(const Key& key) const {
        const auto found = plans_.find(key);
        return found == plans_.end() ? nullptr : &found->second;
    }
    /// The reference stays good as long as the cache.
    const StackPlan& add(const Key& key, StackPlan plan) {
        return plans_.emplace(key, std::move(plan)).first->second;
    }

  private:
    struct Hash {
        std::size_t operator()(const Key& key) const {
            const auto side = [](std::optional<double> length) {
                return std::hash<double>{}(length.value_or(-1));
            };
            return std::hash<const void*>{}(key.stack) ^ (side(key.width) * 3) ^ (side(key.height) * 7);
        }
    };

    std::unordered_map<Key, StackPlan, Hash> plans_;
};

}  // namespace platform

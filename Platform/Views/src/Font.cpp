#include <Views/Font.h>

#include "InterfaceFont.h"

#include <array>
#include <atomic>
#include <charconv>
#include <cmath>
#include <mutex>
#include <utility>

namespace platform {

namespace {

struct FamilySetting {
    std::mutex mutex;
    std::string family;
    std::atomic<std::uint64_t> generation{0};
};

FamilySetting& familySetting() {
    static FamilySetting setting;
    return setting;
}

}  // namespace

double Font::lineHeight() const {
    static constexpr std::array<std::pair<double, double>, 4> boxes = {
        {{10, 13}, {11, 14}, {12, 16}, {30, 36}}};
    for (const auto& [fontSize, box] : boxes) {
        if (size == fontSize) return box + leading;
    }
    return std::ceil(size * 1.25) + leading;
}

std::string Font::description() const {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), size).ptr;
    std::string text(digits.data(), end);
    if (isBold) text += " bold";
    if (hasMonospacedDigits) text += " tabular";
    return text;
}

void setInterfaceFontFamily(std::string family) {
    auto& setting = familySetting();
    const std::lock_guard lock(setting.mutex);
    setting.family = std::move(family);
    ++setting.generation;
}

std::uint64_t interfaceFontGeneration() {
    return familySetting().generation.load();
}

std::string interfaceFontFamily() {
    constexpr const char* fallbacks = "Inter, Cantarell, Noto Sans, DejaVu Sans";
    auto& setting = familySetting();
    const std::lock_guard lock(setting.mutex);
    return setting.family.empty() ? fallbacks : setting.family + ", " + fallbacks;
}

}  // namespace platform

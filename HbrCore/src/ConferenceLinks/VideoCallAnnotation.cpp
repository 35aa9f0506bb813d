#include <HbrCore/ConferenceLinks/VideoCallAnnotation.h>

#include <string_view>

namespace hbr {

std::optional<std::string> removingVideoCallAnnotation(const std::string& text) {
    constexpr std::string_view opening = "----( Video Call )----\n";
    constexpr std::string_view closing = "---===---";
    const auto start = text.find(opening);
    if (start == std::string::npos) return text;
    const auto end = text.find(closing, start + opening.size());
    if (end == std::string::npos) return text;

    const auto block = text.substr(start, end + closing.size() - start);
    std::string rest = text.substr(0, start);
    for (auto from = start + block.size();;) {
        const auto next = text.find(block, from);
        rest.append(text, from, next == std::string::npos ? next : next - from);
        if (next == std::string::npos) break;
        from = next + block.size();
    }
    if (rest.empty()) return std::nullopt;
    return rest;
}

}  // namespace hbr

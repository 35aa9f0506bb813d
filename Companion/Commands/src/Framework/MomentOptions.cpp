#include "Framework/MomentOptions.h"

#include <TimeAndText/JoinedText.h>
#include <When/WhenText.h>
#include <CLI/App.hpp>

namespace hbr {

void MomentOptions::declare(CLI::App& app) {
    auto* at = app.add_option("--at", at_,
                              "When: \"tomorrow 9:00\", \"fri 14:30\", \"2026-12-01 08:00\", \"in 20m\"");
    at->type_name("WHEN")->expected(1, -1);
    auto* in = app.add_option("--in", in_, "After how long: 20m, 1h30, \"2 hours\", \"3 days\"");
    in->type_name("DURATION")->expected(1, -1)->excludes(at);
}

std::optional<platform::Date> MomentOptions::moment(std::string_view command, std::vector<std::string>& text,
                                                    const CommandContext& context) const {
    if (!given()) return std::nullopt;
    const auto& words = at_.empty() ? in_ : at_;
    const auto read = at_.empty() ? afterLength : whenOf;
    const std::size_t fewest = text.empty() ? 1 : words.size();
    std::string refusal;
    for (std::size_t count = words.size(); count >= fewest; --count) {
        const auto end = words.begin() + static_cast<std::ptrdiff_t>(count);
        try {
            const auto moment = read(platform::joined({words.begin(), end}, " "), *context.environment());
            if (text.empty()) text.assign(end, words.end());
            return moment;
        } catch (const WhenRefusal& reason) {
            refusal = reason.what();
            if (reason.isUnderstood) break;
        }
    }
    throw CommandFailure(ExitCode::wrongUsage,
                         std::string(command) + (at_.empty() ? ": --in: " : ": --at: ") + refusal);
}

}  // namespace hbr

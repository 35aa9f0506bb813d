#include "ArgumentList.h"

#include "TextDirection.h"

#include <string_view>
#include <variant>

namespace hbr {

ArgumentList::ArgumentList(std::span<const L10n::FormatArgument> arguments, bool isRightToLeftSentence)
    : arguments_(arguments.begin(), arguments.end()) {
    // Reserved once: the arguments refer to these texts.
    isolated_.reserve(arguments_.size());
    for (auto& argument : arguments_) {
        if (const auto* number = std::get_if<std::int64_t>(&argument)) {
            if (!count_) count_ = *number;
        } else if (const auto text = std::get<std::string_view>(argument);
                   runsAgainst(text, isRightToLeftSentence)) {
            argument = isolated_.emplace_back(isolatedText(text));
        }
    }
}

}  // namespace hbr

#include <Commands/StatusTemplate.h>

#include <TimeAndText/Text.h>

#include <algorithm>

namespace hbr {

namespace {

/// Without markup, from "<" to ">".
std::size_t visibleLength(std::string_view text) {
    std::string visible;
    while (!text.empty()) {
        const std::size_t start = std::min(text.find('<'), text.size());
        visible += text.substr(0, start);
        const std::size_t end = text.find('>', start);
        if (end == std::string_view::npos) {
            visible += text.substr(start);
            break;
        }
        text.remove_prefix(end + 1);
    }
    return platform::characterCount(visible);
}

bool isPlaceholder(std::string_view name) {
    const auto& all = StatusTemplate::placeholders();
    return std::ranges::any_of(all, [name](const auto& one) { return one.name == name; });
}

}  // namespace

const std::vector<StatusTemplate::Placeholder>& StatusTemplate::placeholders() {
    static const std::vector<Placeholder> all = {
        {"title", "the title"},
        {"when", "in how long it begins, or how long it still lasts: \"in 9 m\", \"41 m left\""},
        {"compact", "the same, shorter: \"9m\", \"41m left\""},
        {"time", "from when to when, with the day unless it is today"},
        {"start", "the time at which it begins"},
        {"end", "the time at which it ends"},
        {"location", "the place"},
        {"calendar", "the name of the calendar"},
        {"call", "the service of the call"},
        {"link", "the address of the call"},
        {"state", "current, pending, upcoming or problem"},
        {"progress", "how much of a current event is over, in percent"},
        {"id", "the identifier, for other commands"},
    };
    return all;
}

StatusTemplate::StatusTemplate(std::string_view text) {
    std::string literal;
    while (!text.empty()) {
        if (text.starts_with("{{") || text.starts_with("}}")) {
            literal += text.front();
            text.remove_prefix(2);
        } else if (text.starts_with('{')) {
            const std::size_t end = text.find('}');
            if (end == std::string_view::npos)
                throw TemplateError{TemplateError::Kind::unclosedBrace, std::string(text)};
            std::string name(text.substr(1, end - 1));
            if (!isPlaceholder(name)) throw TemplateError{TemplateError::Kind::unknownPlaceholder, name};
            if (!literal.empty()) pieces_.push_back({false, std::move(literal)});
            literal.clear();
            pieces_.push_back({true, std::move(name)});
            text.remove_prefix(end + 1);
        } else {
            literal += text.front();
            text.remove_prefix(1);
        }
    }
    if (!literal.empty()) pieces_.push_back({false, std::move(literal)});
}

std::string StatusTemplate::text(const Values& values,
                                 const std::function<std::string(std::string_view)>& escape,
                                 std::optional<std::size_t> maxLength) const {
    std::vector<std::string> texts;
    std::vector<std::size_t> lengths;
    std::size_t length = 0;
    for (const auto& piece : pieces_) {
        const auto value = piece.isPlaceholder ? values.find(piece.text) : values.end();
        texts.push_back(!piece.isPlaceholder    ? piece.text
                        : value != values.end() ? value->second
                                                : std::string());
        lengths.push_back(piece.isPlaceholder ? platform::characterCount(texts.back())
                                              : visibleLength(texts.back()));
        length += lengths.back();
    }

    const auto shorten = [&](std::size_t i, std::size_t shortest) {
        if (!maxLength || length <= *maxLength || !pieces_[i].isPlaceholder) return;
        const std::size_t excess = length - *maxLength;
        const std::size_t kept = std::max(lengths[i] > excess ? lengths[i] - excess : 0, shortest);
        if (kept >= lengths[i]) return;
        texts[i] = shortened(texts[i], kept);
        length -= lengths[i] - kept;
        lengths[i] = kept;
    };
    constexpr std::size_t shortestTitle = 2;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        if (pieces_[i].text == "title") shorten(i, shortestTitle);
    }
    for (std::size_t i = pieces_.size(); i-- > 0;)
        shorten(i, 0);

    std::string line;
    for (std::size_t i = 0; i < pieces_.size(); ++i)
        line += pieces_[i].isPlaceholder ? escape(texts[i]) : texts[i];
    return line;
}

std::string shortened(std::string_view text, std::size_t maxLength) {
    if (platform::characterCount(text) <= maxLength) return std::string(text);
    if (maxLength == 0) return {};
    return platform::trimmed(platform::firstCharacters(text, maxLength - 1)) + "…";
}

}  // namespace hbr

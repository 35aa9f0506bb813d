#include "Status/StatusFormats.h"

#include <HbrCore/Events/EventJson.h>

namespace hbr {

namespace {

constexpr const char* pendingColor = "#E16C10";
constexpr const char* red = "#D93025";

std::string asItIs(std::string_view text) {
    return std::string(text);
}

std::string escapedForPango(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

/// Some bars read "%{" as a command, for example one that a click runs. A title from an invitation must not
/// be able to do that.
std::string withoutBarCommands(std::string_view text) {
    std::string safe;
    for (const char c : text) {
        if (c == '{' && safe.ends_with('%')) safe += ' ';
        safe += c;
    }
    return safe;
}

bool hasCall(const Status& status) {
    return status.event && !status.event->videoConferenceLinks.empty();
}

class StatusWriter {
  public:
    StatusWriter(const Status& status, const StatusOptions& options, const CoreServices& core)
        : status_(status), options_(options), core_(core), values_(statusValues(status, core)) {}

    std::string output() const {
        switch (options_.format) {
            case StatusFormat::plain:
                return line(withoutBarCommands);
            case StatusFormat::waybar:
                return writeJson(waybar());
            case StatusFormat::i3blocks:
                return options_.follows ? writeJson(i3blocks()) : i3blocksLines();
            case StatusFormat::json:
                return writeJson(json());
        }
        return {};
    }

  private:
    std::string line(std::string (*escape)(std::string_view)) const {
        static const StatusTemplate words("{title}");
        if (status_.state == StatusState::none) return {};
        const bool isProblem = status_.state == StatusState::problem;
        return (isProblem ? words : options_.line).text(values_, escape, options_.maxLength);
    }

    platform::JsonValue waybar() const {
        auto classes = platform::JsonValue::array();
        classes.append(rawValue(status_.state));
        if (hasCall(status_)) classes.append("has-call");
        auto object = platform::JsonValue::object();
        object.set("text", line(escapedForPango))
            .set("alt", rawValue(status_.state))
            .set("tooltip", escapedForPango(statusTooltip(status_, core_)))
            .set("class", std::move(classes))
            .set("percentage", status_.percentage);
        return object;
    }

    /// Null for the bar's own colour.
    const char* color() const {
        if (status_.state == StatusState::pending) return pendingColor;
        return status_.state == StatusState::problem ? red : nullptr;
    }

    std::string shortText() const {
        const auto compact = values_.find("compact");
        return compact == values_.end() ? line(asItIs) : compact->second;
    }

    std::string i3blocksLines() const {
        const std::string text = line(asItIs);
        if (text.empty()) return {};
        return text + "\n" + shortText() + (color() ? "\n" + std::string(color()) : "");
    }

    platform::JsonValue i3blocks() const {
        auto object = platform::JsonValue::object();
        object.set("full_text", line(asItIs)).set("short_text", shortText());
        // The bar keeps the last value of a missing key.
        object.set("color", color() ? color() : "");
        return object;
    }

    platform::JsonValue json() const {
        auto object = platform::JsonValue::object();
        object.set("state", rawValue(status_.state))
            .set("text", line(asItIs))
            .set("tooltip", statusTooltip(status_, core_))
            .set("percentage", status_.percentage)
            .set("hasCall", hasCall(status_))
            .set("event", status_.event ? eventJson(*status_.event) : platform::JsonValue(nullptr));
        return object;
    }

    const Status& status_;
    const StatusOptions& options_;
    const CoreServices& core_;
    StatusTemplate::Values values_;
};

}  // namespace

std::string statusOutput(const Status& status, const StatusOptions& options, const CoreServices& core) {
    return StatusWriter(status, options, core).output();
}

}  // namespace hbr

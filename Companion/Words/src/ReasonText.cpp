#include <Words/ReasonText.h>

#include <HbrUtils/RelativeTimeTexts.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <cstdlib>
#include <vector>

namespace hbr {

namespace {

enum class Wording { userLanguage, english };

class ReasonWriter {
  public:
    ReasonWriter(const Formatters& formatters, platform::Date now, Wording wording)
        : formatters_(formatters), environment_(formatters.environment()), now_(now), wording_(wording) {}

    std::string text(const Reason& reason) const {
        // The arguments refer to these texts.
        std::vector<std::string> texts;
        texts.reserve(reason.parts.size() + reason.values.size());
        std::vector<L10n::FormatArgument> arguments;
        for (const auto& part : reason.parts)
            arguments.emplace_back(texts.emplace_back(text(part)));
        for (const auto& value : reason.values) {
            if (const auto* number = std::get_if<std::int64_t>(&value)) {
                arguments.emplace_back(*number);
            } else {
                arguments.emplace_back(texts.emplace_back(valueText(value)));
            }
        }
        return worded("Why." + reason.name, arguments);
    }

  private:
    std::string worded(const std::string& key, std::span<const L10n::FormatArgument> arguments) const {
        return wording_ == Wording::english ? englishCompanionText(environment_, key, arguments)
                                            : companionText(environment_, key, arguments);
    }

    std::string valueText(const ReasonValue& value) const {
        if (const auto* moment = std::get_if<ReasonMoment>(&value)) return momentText(*moment);
        if (const auto* length = std::get_if<ReasonLength>(&value)) {
            return formatters_.durationFormatter().string(length->seconds).value_or("");
        }
        const auto& text = std::get<std::string>(value);
        return wording_ == Wording::english ? text : onOneLine(text);
    }

    /// "10:15 AM"; with the day unless it is today.
    std::string momentText(const ReasonMoment& moment) const {
        const int days = environment_.calendar.daysBetween(now_, moment.date);
        const std::string time = formatters_.timeOnly().string(moment.date);
        if (!moment.hasPreposition && days == 0) return time;
        if (wording_ == Wording::english) {
            return days == 0 ? "at " + time : formatters_.timeAndDateFormatter().string(moment.date, now_);
        }
        // "tomorrow" takes no preposition.
        if (!moment.hasPreposition || std::abs(days) == 1) {
            return formatters_.timeAndDateFormatter().string(moment.date, now_);
        }
        return formattedWithOnAndAt(moment.date, formatters_.dateOnly(), formatters_.timeOnly(), formatters_,
                                    now_);
    }

    const Formatters& formatters_;
    const platform::Environment& environment_;
    platform::Date now_;
    Wording wording_;
};

}  // namespace

std::string reasonText(const Reason& reason, const Formatters& formatters, platform::Date now) {
    return ReasonWriter(formatters, now, Wording::userLanguage).text(reason);
}

std::string englishReasonText(const Reason& reason, const Formatters& formatters, platform::Date now) {
    return ReasonWriter(formatters, now, Wording::english).text(reason);
}

}  // namespace hbr

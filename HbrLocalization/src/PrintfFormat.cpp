#include <HbrLocalization/PrintfFormat.h>

#include <TimeAndText/Ascii.h>
#include <unicode/numberformatter.h>

#include <charconv>
#include <optional>

namespace hbr {

namespace {

struct Placeholder {
    /// Of the argument, from 0; absent: the next one.
    std::optional<std::size_t> position;
    std::size_t length = 0;
};

/// `rest` begins behind the percent sign.
std::optional<Placeholder> parsePlaceholder(std::string_view rest) {
    Placeholder placeholder;
    std::size_t i = 0;
    while (i < rest.size() && platform::isAsciiDigit(rest[i]))
        ++i;
    if (i > 0) {
        std::size_t number = 0;
        const auto parsed = std::from_chars(rest.data(), rest.data() + i, number);
        if (i == rest.size() || rest[i] != '$' || parsed.ec != std::errc{} || number == 0)
            return std::nullopt;
        placeholder.position = number - 1;
        ++i;
    }
    while (i < rest.size() && (rest[i] == 'l' || rest[i] == 'q' || rest[i] == 'h'))
        ++i;
    if (i == rest.size() || (rest[i] != '@' && rest[i] != 'd' && rest[i] != 'i')) return std::nullopt;
    placeholder.length = i + 1;
    return placeholder;
}

/// The number format of the locale that the thread used last: making one takes longer than using it.
const icu::number::LocalizedNumberFormatter& numberFormat(const platform::Locale& locale) {
    struct Kept {
        std::string identifier;
        icu::number::LocalizedNumberFormatter format;
    };
    thread_local std::optional<Kept> kept;
    if (!kept || kept->identifier != locale.identifier) {
        kept.emplace(Kept{locale.identifier,
                          icu::number::NumberFormatter::withLocale(icu::Locale(locale.identifier.c_str()))});
    }
    return kept->format;
}

std::string localizedNumber(std::int64_t number, const platform::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::string result;
    numberFormat(locale).formatInt(number, status).toString(status).toUTF8String(result);
    return U_SUCCESS(status) ? result : std::to_string(number);
}

}  // namespace

std::string formattedText(std::string_view format, std::span<const L10n::FormatArgument> arguments,
                          const platform::Locale& locale) {
    std::string result;
    result.reserve(format.size() + 16);
    std::size_t next = 0;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            result += format[i];
            continue;
        }
        if (i + 1 < format.size() && format[i + 1] == '%') {
            result += '%';
            ++i;
            continue;
        }
        const auto placeholder = parsePlaceholder(format.substr(i + 1));
        const auto position = placeholder ? placeholder->position.value_or(next) : arguments.size();
        if (position >= arguments.size()) {
            result += '%';
            continue;
        }
        if (!placeholder->position) ++next;
        if (const auto* text = std::get_if<std::string_view>(&arguments[position]))
            result += *text;
        else
            result += localizedNumber(std::get<std::int64_t>(arguments[position]), locale);
        i += placeholder->length;
    }
    return result;
}

}  // namespace hbr

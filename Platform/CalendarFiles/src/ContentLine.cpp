#include <CalendarFiles/ContentLine.h>
#include <TimeAndText/Ascii.h>

namespace platform {
namespace {

std::size_t findOutsideQuotes(std::string_view text, char wanted, std::size_t from) {
    bool quoted = false;
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == '"') quoted = !quoted;
        if (text[i] == wanted && !quoted) return i;
    }
    return std::string_view::npos;
}

std::string decodedParameter(std::string_view raw) {
    if (raw.size() >= 2 && raw.front() == '"' && raw.back() == '"') raw = raw.substr(1, raw.size() - 2);
    std::string text;
    text.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '^' && i + 1 < raw.size()) {
            const char next = raw[i + 1];
            const char decoded = next == 'n' ? '\n' : next == '\'' ? '"' : next == '^' ? '^' : '\0';
            if (decoded) {
                text += decoded;
                ++i;
                continue;
            }
        }
        text += raw[i];
    }
    return text;
}

/// Calls `visit(name, value)` until it says false; a parameter without "=" has an empty name.
template <class Visit>
void forEachParameter(std::string_view parameters, const Visit& visit) {
    for (std::size_t from = 0; from < parameters.size();) {
        auto end = findOutsideQuotes(parameters, ';', from);
        if (end == std::string_view::npos) end = parameters.size();
        const auto piece = parameters.substr(from, end - from);
        const auto equals = piece.find('=');
        const bool isNamed = equals != std::string_view::npos;
        const auto name = isNamed ? trimmedAscii(piece.substr(0, equals)) : std::string_view();
        if (!visit(name, trimmedAscii(isNamed ? piece.substr(equals + 1) : piece))) return;
        from = end + 1;
    }
}

}  // namespace

std::vector<std::string_view> commaSeparated(std::string_view text) {
    std::vector<std::string_view> pieces;
    for (std::size_t from = 0;;) {
        const auto comma = text.find(',', from);
        pieces.push_back(text.substr(from, comma == std::string_view::npos ? comma : comma - from));
        if (comma == std::string_view::npos) return pieces;
        from = comma + 1;
    }
}

std::string unescapedText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == 'n' || next == 'N') {
            result += '\n';
            ++i;
        } else if (next == ',' || next == ';' || next == ':' || next == '"' || next == '\\') {
            result += next;
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::optional<ContentLine> ContentLine::parse(std::string_view line) {
    const auto nameEnd = line.find_first_of(";:");
    if (nameEnd == std::string_view::npos || nameEnd == 0) return std::nullopt;
    ContentLine result;
    result.name = trimmedAscii(line.substr(0, nameEnd));
    if (line[nameEnd] == ':') {
        result.value = line.substr(nameEnd + 1);
        return result;
    }
    auto colon = findOutsideQuotes(line, ':', nameEnd);
    // A quote that is never closed would swallow the value.
    if (colon == std::string_view::npos) colon = line.find(':', nameEnd);
    if (colon == std::string_view::npos) return std::nullopt;
    result.parameters = line.substr(nameEnd + 1, colon - nameEnd - 1);
    result.value = line.substr(colon + 1);
    return result;
}

bool ContentLine::is(std::string_view upperName) const {
    return equalIgnoringCase(name, upperName);
}

std::optional<std::string> ContentLine::parameter(std::string_view upperName) const {
    std::optional<std::string> found;
    forEachParameter(parameters, [&](std::string_view key, std::string_view text) {
        if (equalIgnoringCase(key, upperName)) found = decodedParameter(text);
        return !found;
    });
    return found;
}

bool ContentLine::hasType(std::string_view upperWord) const {
    bool found = false;
    forEachParameter(parameters, [&](std::string_view key, std::string_view text) {
        if (key.empty()) {
            found = equalIgnoringCase(text, upperWord);
        } else if (equalIgnoringCase(key, "TYPE")) {
            const auto types = decodedParameter(text);
            for (const auto type : commaSeparated(types))
                found = found || equalIgnoringCase(trimmedAscii(type), upperWord);
        }
        return !found;
    });
    return found;
}

}  // namespace platform

#include <Setup/PathExpansion.h>

#include <TimeAndText/Ascii.h>

#include <glob.h>
#include <algorithm>
#include <cstdlib>

namespace hbr {

namespace {

bool isNameLetter(char c) {
    return platform::isAsciiAlphanumeric(c) || c == '_';
}

std::string withVariables(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const bool isBraced = text.substr(i).starts_with("${");
        const std::size_t begin = i + (isBraced ? 2 : 1);
        std::size_t end = begin;
        while (text[i] == '$' && end < text.size() && isNameLetter(text[end]))
            ++end;
        const bool isName = text[i] == '$' && end > begin && (!isBraced || text.substr(end).starts_with('}'));
        const char* value =
            isName ? std::getenv(std::string(text.substr(begin, end - begin)).c_str()) : nullptr;
        if (value) {
            result += value;
            i = end + (isBraced ? 1 : 0);
        } else {
            result += text[i++];
        }
    }
    return result;
}

}  // namespace

std::filesystem::path expandedPath(std::string_view text, const std::filesystem::path& home) {
    const std::string expanded = withVariables(text);
    if (expanded == "~") return home;
    return expanded.starts_with("~/") ? home / expanded.substr(2) : std::filesystem::path(expanded);
}

std::vector<std::filesystem::path> matchingPaths(const std::filesystem::path& pattern) {
    const std::string& text = pattern.native();
    if (text.find_first_of("*?[") == std::string::npos) return {pattern};
    std::vector<std::filesystem::path> found;
    glob_t matches{};
    if (glob(text.c_str(), 0, nullptr, &matches) == 0) {
        found.assign(matches.gl_pathv, matches.gl_pathv + matches.gl_pathc);
    }
    globfree(&matches);
    return found;
}

std::string withTilde(const std::filesystem::path& path, const std::filesystem::path& home) {
    if (path == home) return "~";
    const auto below = path.lexically_relative(home);
    const bool isBelow = !below.empty() && *below.begin() != "..";
    return isBelow ? "~/" + below.string() : path.string();
}

}  // namespace hbr

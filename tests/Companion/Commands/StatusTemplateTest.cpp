#include <Commands/StatusTemplate.h>
#include <gtest/gtest.h>

namespace {

using namespace hbr;

const StatusTemplate::Values values = {
    {"title", "Planning & review"}, {"when", "in 9 m"}, {"start", "10:00"}};

std::string filled(std::string_view text, std::optional<std::size_t> maxLength = {}) {
    const auto escape = [](std::string_view value) {
        std::string escaped(value);
        if (const auto at = escaped.find('&'); at != std::string::npos) escaped.replace(at, 1, "&amp;");
        return escaped;
    };
    return StatusTemplate(text).text(values, escape, maxLength);
}

TEST(StatusTemplate, PutsEscapedValuesIntoItsOwnText) {
    const std::pair<const char*, const char*> cases[] = {
        {"{title} · {when}", "Planning &amp; review · in 9 m"},
        {"<b>{start}</b> & {{{start}}}", "<b>10:00</b> & {10:00}"},
        {"{location}", ""},
        {"a } b", "a } b"},
        {"", ""}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(filled(text), expected);
    for (const char* bad : {"{titel}", "{", "{title", "{}", "{Title}"})
        EXPECT_THROW(StatusTemplate{bad}, TemplateError) << bad;
}

TEST(StatusTemplate, ShortensTheTitleFirstAndKeepsMarkupWhole) {
    const std::tuple<const char*, std::size_t, const char*> cases[] = {
        {"{title} · {when}", 26, "Planning &amp; review · in 9 m"},
        {"{title} · {when}", 25, "Planning &amp; revi… · in 9 m"},
        {"{title} · {when}", 11, "P… · in 9 m"},
        {"{title} · {when}", 8, "P… · in…"},
        {"{title} · {when}", 1, " · "},
        {"{when} {title}", 20, "in 9 m Planning &amp; r…"},
        {"<b>{title}</b>", 9, "<b>Planning…</b>"},
        {"{title}", 10, "Planning…"}};
    for (const auto& [text, length, expected] : cases)
        EXPECT_EQ(filled(text, length), expected) << length;
}

}  // namespace

#include <Values/TomlEdit.h>
#include <gtest/gtest.h>

namespace {

using platform::PropertyArray;
using platform::PropertyValue;

const std::string document =
    "# all of it\n"
    "[[account]]\n"
    "name = 'Wörk'   # «mine»\n"
    "addresses = [\n  \"a@b.c\", # old\n  \"d@e.f\",\n]\n"
    "[account.more]\nnote = '''\n[[account]]\n'''\n"
    "\n"
    "# at home\n"
    "[[account]]\n"
    "name = \"Home\"\n"
    "# delegate = true\n"
    "\n"
    "# the end";

std::string with(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(TomlEdit, OneValueChangesAndTheRestStaysAsItIsWritten) {
    const PropertyValue name("Büro");
    const PropertyValue addresses(PropertyArray{PropertyValue("x@y.z")});
    const PropertyValue yes(true);
    const std::tuple<std::size_t, std::string, const PropertyValue*, std::string> cases[] = {
        {0, "name", &name, with(document, "'Wörk'   #", "\"Büro\"   #")},
        {0, "addresses", &addresses,
         with(document, "[\n  \"a@b.c\", # old\n  \"d@e.f\",\n]", "[ \"x@y.z\" ]")},
        {0, "addresses", nullptr, with(document, "addresses = [\n  \"a@b.c\", # old\n  \"d@e.f\",\n]\n", "")},
        {0, "delegate", &yes, with(document, "[account.more]", "delegate = true\n[account.more]")},
        {1, "delegate", &yes, with(document, "\"Home\"\n", "\"Home\"\ndelegate = true\n")},
        {1, "delegate", nullptr, document},
    };
    for (const auto& [index, key, value, expected] : cases) {
        EXPECT_EQ(platform::withTomlValue(document, "account", index, key, value), expected) << index << key;
    }
    EXPECT_EQ(platform::withTomlValue("[[a]]\nb = 1", "a", 0, "c", &yes), "[[a]]\nb = 1\nc = true\n");
}

TEST(TomlEdit, ATableGoesWithItsOwnCommentsOnly) {
    const std::size_t second = document.find("# at home");
    const std::size_t end = document.find("# the end");
    EXPECT_EQ(platform::withoutTomlTable(document, "account", 0), "# all of it\n" + document.substr(second));
    EXPECT_EQ(platform::withoutTomlTable(document, "account", 1),
              document.substr(0, second) + document.substr(end));
    for (const char* other : {"account = [{name = 'A'}]\n", "[account]\nname = 'A'\n", "[[account\n", ""})
        EXPECT_FALSE(platform::withoutTomlTable(other, "account", 0)) << other;
    EXPECT_FALSE(platform::withoutTomlTable(document, "account", 2));
}

}  // namespace

#include "Journey.h"

#include <gmock/gmock.h>

#include <cctype>
#include <regex>
#include <sstream>

namespace {

class ManualPage : public test::Journey {
  protected:
    std::vector<std::string> offered(std::vector<std::string> words) {
        words.insert(words.begin(), "--complete");
        std::istringstream lines(companion(words).out);
        std::vector<std::string> result;
        for (std::string line; std::getline(lines, line);)
            result.push_back(line.substr(0, line.find('\t')));
        return result;
    }

    /// `word` is in the page as a word of its own.
    static bool names(const std::string& page, const std::string& word) {
        const auto isPart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '-'; };
        for (auto at = page.find(word); at != std::string::npos; at = page.find(word, at + 1)) {
            if (at > 0 && !isPart(page[at - 1]) && !isPart(page[at + word.size()])) return true;
        }
        return false;
    }
};

TEST_F(ManualPage, NamesEveryCommandAndEveryOption) {
    const std::string page = test::readFile(documents() + "/../packaging/man/heedbanner.1.in");
    // False for what is no command.
    const auto expectNamed = [&](const std::vector<std::string>& place) {
        auto words = place;
        words.push_back("--");
        const auto options = offered(words);
        for (const auto& option : options)
            EXPECT_TRUE(names(page, option.substr(1))) << testing::PrintToString(place) << " " << option;
        return !options.empty();
    };
    const auto commands = offered({""});
    EXPECT_GT(commands.size(), 10u);
    for (const auto& command : commands) {
        EXPECT_TRUE(names(page, command)) << command;
        expectNamed({command});
        for (const auto& action : offered({command, ""})) {
            if (!expectNamed({command, action})) continue;
            EXPECT_TRUE(names(page, action)) << command << " " << action;
        }
    }
    for (std::size_t at = page.find("\n.It Cm "); at != std::string::npos;
         at = page.find("\n.It Cm ", at + 1)) {
        const auto begin = at + 8;
        EXPECT_THAT(commands,
                    testing::Contains(page.substr(begin, page.find_first_of(" \n", begin) - begin)));
    }
}

TEST_F(ManualPage, AndCompletionsNameEveryOptionOfTheOtherPrograms) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> helps = {
        {"heedbanner-widgets", {"--help"}},
        {"heedbanner-widgets", {"timeline", "--help"}},
        {"heedbanner-widgets", {"render", "--help"}},
        {"heedbanner-desktop", {"--help"}}};
    for (const auto& [program, arguments] : helps) {
        const std::string packaging = documents() + "/../packaging/";
        const std::string page = test::readFile(packaging + "man/" + program + ".1.in");
        const std::string completion = test::readFile(packaging + "completions/bash/" + program);
        const std::string help = run(program, arguments).out;
        const std::regex option("(^|\\s|,)--([a-z-]+)");
        int found = 0;
        for (std::sregex_iterator one(help.begin(), help.end(), option); one != std::sregex_iterator();
             ++one) {
            const std::string name = (*one)[2];
            // "-o" is offered as the short form.
            EXPECT_TRUE(names(page, "-" + name)) << program << " --" << name;
            EXPECT_TRUE(name == "output" || names(completion, "--" + name)) << program << " --" << name;
            ++found;
        }
        EXPECT_GT(found, 0) << program;
    }
}

}  // namespace

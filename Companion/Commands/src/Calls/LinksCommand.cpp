#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <System/Files.h>
#include <TimeAndText/LinkDetector.h>
#include <TimeAndText/Text.h>
#include <TimeAndText/Url.h>
#include <Values/JsonText.h>
#include <Values/JsonValue.h>
#include <CLI/App.hpp>

#include <iostream>
#include <iterator>

namespace hbr {

namespace {

platform::JsonValue conferenceLinks(const std::string& text, const VideoConferenceLinkParser& parser) {
    auto array = platform::JsonValue::array();
    for (const auto& link : parser.parse(text)) {
        auto service = platform::JsonValue::object();
        service.set("id", link.service.id).set("name", link.service.name);
        auto object = platform::JsonValue::object();
        object.set("service", std::move(service)).set("url", link.url.absoluteString());
        if (const auto native = parser.nativeUrl(link)) object.set("nativeUrl", native->absoluteString());
        array.append(std::move(object));
    }
    return array;
}

platform::JsonValue detectedLinks(const std::string& text) {
    const auto links = platform::detectLinks(text);
    std::vector<std::size_t> bounds;
    for (const auto& link : links) {
        bounds.push_back(link.start);
        bounds.push_back(link.end);
    }
    const auto units = platform::utf16Offsets(text, bounds);
    auto array = platform::JsonValue::array();
    for (std::size_t i = 0; i < links.size(); ++i) {
        const std::string found = text.substr(links[i].start, links[i].end - links[i].start);
        auto range = platform::JsonValue::array();
        range.append(static_cast<std::int64_t>(units[2 * i]));
        range.append(static_cast<std::int64_t>(units[2 * i + 1]));
        auto object = platform::JsonValue::object();
        object.set("text", found);
        if (const auto url = platform::Url::parse(found)) object.set("url", url->absoluteString());
        object.set("range", std::move(range));
        array.append(std::move(object));
    }
    return array;
}

/// Prints the links found in a text.
class LinksCommand final : public Command {
  public:
    std::string_view name() const override { return "links"; }
    std::string_view group() const override { return commandGroup::trouble; }
    std::string_view summary() const override { return "The conference links found in a text, as JSON"; }
    std::string_view examples() const override {
        return "  heedbanner links invitation.txt\n"
               "  heedbanner links - < invitation.txt\n"
               "  heedbanner links --all invitation.txt   every link, whatever it leads to";
    }

    void declare(CLI::App& app) override {
        app.add_option("FILE", file_, "A text file; - or no file for standard input")->type_name("");
        app.add_flag("--all", all_, "Every link, with its place in UTF-16 units");
    }

    ExitCode run(CommandContext& context) override {
        const std::string text = platform::sanitizedUtf8(read());
        // Only the parser; no calendar is read.
        const auto answer = all_ ? detectedLinks(text)
                                 : conferenceLinks(text, VideoConferenceLinkParser(context.environment()));
        context.console().out() << writeJson(answer, 2) << "\n";
        return ExitCode::done;
    }

  private:
    std::string read() const {
        if (file_ == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
        std::error_code error;
        auto text = platform::readRegularFile(file_, error);
        if (!text) throw CommandFailure(ExitCode::failed, file_ + ": " + error.message());
        return *std::move(text);
    }

    std::string file_ = "-";
    bool all_ = false;
};

}  // namespace

std::unique_ptr<Command> makeLinksCommand() {
    return std::make_unique<LinksCommand>();
}

}  // namespace hbr

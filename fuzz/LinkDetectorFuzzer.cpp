#include "Expect.h"

#include <TimeAndText/LinkDetector.h>
#include <TimeAndText/Text.h>
#include <TimeAndText/Url.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

bool isOnCharacterBound(std::string_view text, std::size_t offset) {
    return offset == text.size() || (static_cast<unsigned char>(text[offset]) & 0xC0) != 0x80;
}

void detect(std::string_view text, bool isUtf8) {
    const auto links = platform::detectLinks(text);
    std::vector<std::size_t> bounds;
    std::size_t end = 0;
    for (const auto& link : links) {
        expect(end <= link.start, "links are in order and apart");
        expect(link.start < link.end && link.end <= text.size(), "a link lies in the text");
        expect(!isUtf8 || (isOnCharacterBound(text, link.start) && isOnCharacterBound(text, link.end)),
               "a link is cut between characters");
        const auto found = text.substr(link.start, link.end - link.start);
        expect(found.find_first_of(" \t\r\n<>\"`") == std::string_view::npos, "a link ends at white space");
        if (const auto url = platform::Url::parse(found))
            expect(platform::Url::parse(url->absoluteString()) == url, "a URL reads as it is written");
        end = link.end;
        bounds.push_back(link.start);
        bounds.push_back(link.end);
    }
    const auto units = platform::utf16Offsets(text, bounds);
    for (std::size_t i = 1; i < units.size(); ++i)
        expect(units[i - 1] <= units[i], "UTF-16 offsets ascend");
    expect(platform::detectLinks(text) == links, "a text has the same links every time");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    detect(bytes, false);
    detect(platform::sanitizedUtf8(bytes), true);
    return 0;
}

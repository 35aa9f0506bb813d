#include "Expect.h"
#include "FuzzedHome.h"

#include <HbrCore/ConferenceLinks/VideoCallAnnotation.h>
#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzedHome home;
    static const hbr::VideoConferenceLinkParser parser(home.environment());
    const std::string text(reinterpret_cast<const char*>(data), size);

    const auto links = parser.parse(text);
    expect(parser.parse(text) == links, "a text has the same links every time");
    for (auto link = links.begin(); link != links.end(); ++link) {
        const auto first = std::ranges::find_if(
            parser.services(), [&link](const auto& service) { return service.matches(link->url); });
        expect(first != parser.services().end() && *first == link->service, "the first service that matches");
        expect(std::find(links.begin(), link, *link) == link, "a link is found once");
        parser.nativeUrl(*link);
        link->makeGoogleUrl("ann@example.org");
        expect(hbr::JsonCoding<hbr::VideoConferenceLink>::decode(
                   hbr::JsonCoding<hbr::VideoConferenceLink>::encode(*link)) == *link,
               "a link reads as it is written");
    }
    if (const auto rest = hbr::removingVideoCallAnnotation(text))
        expect(rest->size() <= text.size(), "notes never grow");
    return 0;
}

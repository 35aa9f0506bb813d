#include "Expect.h"
#include "FuzzedHome.h"

#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>
#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

constexpr std::string_view notes =
    "https://zoom.us/j/1 https://call.example.org/room/12?x=1 facetime:ann@example.org "
    "https://xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx.example/aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa!";

}  // namespace

/// A services file of the user, and the patterns in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzedHome home;
    home.write(hbr::servicesFileName, {reinterpret_cast<const char*>(data), size});
    const hbr::VideoConferenceLinkParser parser(home.environment());
    const auto& services = parser.services();
    const auto& builtIn = hbr::VideoConferenceService::all();
    expect(services.size() >= builtIn.size() && std::equal(builtIn.begin(), builtIn.end(), services.begin()),
           "the built-in services are in force");
    const auto links = parser.parse(notes);
    expect(!links.empty() && links.front().service == hbr::VideoConferenceService::zoom(),
           "a built-in service wins over the file");
    hbr::servicesMissingFromCopy(*home.environment());
    const auto encoded = hbr::encodeServices(services);
    expect(hbr::decodeServices(encoded) == services, "services read as they are written");
    return 0;
}

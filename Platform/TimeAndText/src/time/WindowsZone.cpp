#include <TimeAndText/Ascii.h>
#include <TimeAndText/WindowsZone.h>

#include <unicode/timezone.h>
#include <unicode/ures.h>

#include <string>
#include <unordered_map>

namespace platform {
namespace {

using ZoneIds = std::unordered_map<std::string, icu::UnicodeString>;

/// ICU finds a name only in its own letter case, so its names are listed once, in lower case.
ZoneIds readZoneIds() {
    ZoneIds ids;
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUResourceBundlePointer bundle(ures_openDirect(nullptr, "windowsZones", &status));
    const icu::LocalUResourceBundlePointer names(
        ures_getByKey(bundle.getAlias(), "mapTimezones", nullptr, &status));
    while (U_SUCCESS(status) && ures_hasNext(names.getAlias())) {
        const icu::LocalUResourceBundlePointer entry(
            ures_getNextResource(names.getAlias(), nullptr, &status));
        if (U_FAILURE(status)) break;
        const char* name = ures_getKey(entry.getAlias());
        icu::TimeZone::getIDForWindowsID(name, nullptr, ids[asciiLower(name)], status);
    }
    // What ICU 72 does not know yet: Almaty and Chihuahua have left the offset of these zones. The third is
    // an older name of "Russia Time Zone 11".
    ids["central asia standard time"] = "Asia/Bishkek";
    ids["mountain standard time (mexico)"] = "America/Mazatlan";
    ids["kamchatka standard time"] = "Asia/Kamchatka";
    return ids;
}

std::optional<TimeZone> zoneWithId(const icu::UnicodeString& id, const std::filesystem::path& directory) {
    std::string name;
    return TimeZone::named(id.toUTF8String(name), directory);
}

}  // namespace

std::optional<TimeZone> zoneOfWindowsName(std::string_view name, const std::filesystem::path& directory) {
    static const ZoneIds ids = readZoneIds();
    const auto found = ids.find(asciiLower(name));
    if (found == ids.end()) return std::nullopt;
    if (auto zone = zoneWithId(found->second, directory)) return zone;
    // ICU prefers older names ("Asia/Calcutta"), which some systems no longer have.
    for (int i = 0; i < icu::TimeZone::countEquivalentIDs(found->second); ++i) {
        const auto id = icu::TimeZone::getEquivalentID(found->second, i);
        if (auto zone = zoneWithId(id, directory)) return zone;
    }
    return std::nullopt;
}

}  // namespace platform

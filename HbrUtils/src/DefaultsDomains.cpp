#include <HbrUtils/DefaultsDomains.h>

#include <string>

namespace hbr {

DefaultsDomains DefaultsDomains::of(const platform::Environment& environment) {
    auto open = [&](std::string_view name) {
        return std::make_shared<platform::DefaultsDomain>(
            environment.configDirectory / (std::string(name) + ".plist"), environment.diagnostics);
    };
    return {open(standardName), open(sharedName)};
}

}  // namespace hbr

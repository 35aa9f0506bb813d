#include <System/Bundle.h>

#include <System/Files.h>
#include <System/ResourceBundle.h>
#include <Values/PropertyList.h>

#include <cstdint>
#include <span>
#include <system_error>

namespace platform {

namespace {

constexpr const char* infoFile = "Info.plist";

}  // namespace

Bundle::Bundle(const std::filesystem::path& folder) {
    std::error_code ignored;
    const auto content = readRegularFile(folder / infoFile, ignored);
    if (!content) return;
    const auto value =
        readPropertyList(std::span(reinterpret_cast<const std::uint8_t*>(content->data()), content->size()));
    if (const auto* dictionary = value ? value->asDictionary() : nullptr) infoDictionary_ = *dictionary;
}

Bundle Bundle::main(const Environment& environment) {
    const auto file = findResource(environment, infoFile);
    return Bundle(file ? file->parent_path() : std::filesystem::path());
}

}  // namespace platform

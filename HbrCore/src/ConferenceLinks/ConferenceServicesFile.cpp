#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>

#include <MxLogger/MxLogger.h>
#include <System/Files.h>
#include <System/ResourceBundle.h>
#include <Values/PropertyList.h>
#include <Values/Uuid.h>

#include "ServicePatterns.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>

namespace hbr {

namespace {

/// Far above any list that a person keeps.
constexpr std::uintmax_t largestFile = 16U << 20U;

std::filesystem::path configFile(const platform::Environment& environment) {
    return environment.dataDirectory / servicesFileName;
}

void report(const platform::Environment& environment, const std::filesystem::path& file, std::string field,
            std::string text) {
    environment.diagnostics->report(
        {platform::Diagnostic::Severity::warning, file, std::nullopt, std::move(field), std::move(text)});
}

[[noreturn]] void fail(const std::filesystem::path& file, const std::error_code& error) {
    throw std::runtime_error(file.string() + ": " + error.message());
}

/// Throws std::runtime_error. A file that another process put there meanwhile stays.
void copyIntoPlace(const std::filesystem::path& source, const std::filesystem::path& destination) {
    std::error_code error;
    const auto content = platform::readRegularFile(source, error, largestFile);
    if (!content) fail(source, error);
    if (!platform::createDirectories(destination.parent_path(), 0700, error))
        fail(destination.parent_path(), error);
    const auto beside = destination.parent_path() /
                        ("." + std::string(servicesFileName) + "." + platform::Uuid::random().uuidString());
    if (!platform::writeFileAtomically(beside, *content, 0600, error)) fail(beside, error);
    std::filesystem::create_hard_link(beside, destination, error);
    // A link whose target is missing is in the way as well, but nothing can be read through it.
    const bool isDangling = error == std::errc::file_exists && !std::filesystem::exists(destination);
    if (error && error != std::errc::file_exists) {
        // A file system without hard links.
        std::filesystem::rename(beside, destination, error);
    }
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    if (isDangling) throw std::runtime_error(destination.string() + ": is a link to a file that is missing");
    if (error && error != std::errc::file_exists) fail(destination, error);
}

const platform::PropertyValue& required(const platform::PropertyDictionary& entry, std::size_t position,
                                        const char* key) {
    const auto* value = entry.find(key);
    if (!value) throw std::runtime_error("entry " + std::to_string(position) + " lacks \"" + key + "\"");
    return *value;
}

std::string requiredText(const platform::PropertyDictionary& entry, std::size_t position, const char* key) {
    const auto* text = required(entry, position, key).asString();
    if (!text)
        throw std::runtime_error("\"" + std::string(key) + "\" of entry " + std::to_string(position) +
                                 " is not a text");
    return *text;
}

bool requiredBoolean(const platform::PropertyDictionary& entry, std::size_t position, const char* key) {
    const auto* truth = std::get_if<bool>(&required(entry, position, key).storage());
    if (!truth)
        throw std::runtime_error("\"" + std::string(key) + "\" of entry " + std::to_string(position) +
                                 " is not a boolean");
    return *truth;
}

std::vector<VideoConferenceService> readServices(const std::filesystem::path& file) {
    std::error_code error;
    const auto content = platform::readRegularFile(file, error, largestFile);
    if (!content) fail(file, error);
    const auto list = platform::readPropertyList(
        std::span(reinterpret_cast<const std::uint8_t*>(content->data()), content->size()));
    if (!list) throw std::runtime_error("it is not a property list");
    return decodeServices(*list);
}

}  // namespace

platform::PropertyValue encodeServices(const std::vector<VideoConferenceService>& services) {
    platform::PropertyArray list;
    for (const auto& service : services) {
        platform::PropertyDictionary entry;
        entry.set("id", service.id);
        entry.set("regex", service.regex);
        entry.set("name", service.name);
        entry.set("supportsNativeApp", service.supportsNativeApp);
        list.emplace_back(std::move(entry));
    }
    return list;
}

std::vector<VideoConferenceService> decodeServices(const platform::PropertyValue& list) {
    const auto* entries = list.asArray();
    if (!entries) throw std::runtime_error("it is not a list of services");
    std::vector<VideoConferenceService> services;
    services.reserve(entries->size());
    for (std::size_t i = 0; i < entries->size(); ++i) {
        const auto position = i + 1;
        const auto* entry = (*entries)[i].asDictionary();
        if (!entry) throw std::runtime_error("entry " + std::to_string(position) + " is not a dictionary");
        services.push_back({requiredText(*entry, position, "id"), requiredText(*entry, position, "regex"),
                            requiredText(*entry, position, "name"),
                            requiredBoolean(*entry, position, "supportsNativeApp")});
    }
    return services;
}

std::optional<platform::Url> configFileUrl(const platform::Environment& environment) {
    if (environment.dataDirectory.empty()) return std::nullopt;
    auto root = platform::Url::parse("file:///");
    if (!root) return std::nullopt;
    return root->appendingPathComponent(configFile(environment).relative_path().string());
}

void copyConfigFileIfNeeded(const platform::Environment& environment) {
    const auto destination = configFileUrl(environment);
    if (!destination) {
        MxLogger::error(LogCategory::conferenceLinks, "could not create configFileUrl");
        return;
    }
    std::error_code error;
    if (std::filesystem::exists(configFile(environment), error)) return;
    const auto resource = platform::findResource(environment, servicesFileName);
    if (!resource) {
        MxLogger::error(LogCategory::conferenceLinks,
                        "could not find conference services config file in bundle");
        report(environment, servicesFileName, "",
               "the shipped file is not installed; only built-in services are known");
        return;
    }
    MxLogger::info(LogCategory::conferenceLinks,
                   "Copying conference services config file to " + destination->absoluteString() + " …");
    try {
        copyIntoPlace(*resource, configFile(environment));
        MxLogger::info(LogCategory::conferenceLinks, "  … success");
    } catch (const std::runtime_error& failure) {
        MxLogger::error(
            LogCategory::conferenceLinks,
            std::string("Could not copy conference services config file. Error: ") + failure.what());
        report(environment, configFile(environment), "",
               std::string("could not be written: ") + failure.what());
    }
}

void loadConfigFile(const platform::Environment& environment, std::vector<VideoConferenceService>& services) {
    if (!configFileUrl(environment)) {
        MxLogger::error(LogCategory::conferenceLinks, "could not create configFileUrl");
        return;
    }
    const auto file = configFile(environment);
    try {
        for (auto& service : readServices(file)) {
            if (!compiledServicePattern(service.regex))
                report(environment, file, "regex", "the pattern of \"" + service.id + "\" does not compile");
            services.push_back(std::move(service));
        }
    } catch (const std::runtime_error& failure) {
        MxLogger::error(
            LogCategory::conferenceLinks,
            std::string("Could not decode conference services config file. Error: ") + failure.what());
        report(environment, file, "",
               std::string("only built-in conference services are known: ") + failure.what());
    }
}

std::vector<VideoConferenceService> servicesMissingFromCopy(const platform::Environment& environment) {
    const auto resource = platform::findResource(environment, servicesFileName);
    if (!resource || environment.dataDirectory.empty()) return {};
    try {
        const auto known = readServices(configFile(environment));
        auto shipped = readServices(*resource);
        std::erase_if(shipped, [&known](const VideoConferenceService& service) {
            return std::ranges::find(known, service.id, &VideoConferenceService::id) != known.end();
        });
        return shipped;
    } catch (const std::runtime_error&) {
        // Loading says what is wrong with the copy.
        return {};
    }
}

}  // namespace hbr

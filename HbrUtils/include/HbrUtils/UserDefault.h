#pragma once

#include <HbrUtils/DefaultsDomains.h>
#include <HbrUtils/Setting.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace hbr {

namespace detail {
template <class T>
bool isNil(const T&) {
    return false;
}
template <class T>
bool isNil(const std::optional<T>& value) {
    return !value;
}
}  // namespace detail

/// One setting in its domain. Every read sees the newest write of any process.
template <class T, class Coding = PropertyCoding<T>>
class UserDefault {
  public:
    UserDefault(std::string key, T defaultValue, bool isShared, const DefaultsDomains& domains)
        : key_(std::move(key)),
          defaultValue_(std::move(defaultValue)),
          isShared_(isShared),
          userDefaults_(domains.domain(isShared)) {}
    UserDefault(const Setting<T, Coding>& setting, const DefaultsDomains& domains)
        : UserDefault(std::string(setting.key), setting.defaultValue, setting.isShared, domains) {}

    const std::string& key() const { return key_; }
    const T& defaultValue() const { return defaultValue_; }
    bool isShared() const { return isShared_; }
    const platform::DefaultsDomainRef& userDefaults() const { return userDefaults_; }

    /// The default when nothing, or something of another type, is stored.
    T get() const { return read(userDefaults_->value(key_), defaultValue_); }
    /// An empty optional removes the key. False when the domain could not be written.
    bool set(const T& value) const { return userDefaults_->setValue(key_, stored(value)); }
    /// Reads, changes and writes under the domain's lock, so that no other writer is lost. `change` may be
    /// called again later (see `DefaultsDomain::update`).
    bool update(const std::function<void(T&)>& change) const {
        return userDefaults_->update(key_, [defaultValue = defaultValue_,
                                            change](const std::optional<platform::PropertyValue>& current) {
            T value = read(current, defaultValue);
            change(value);
            return stored(value);
        });
    }

  private:
    static T read(const std::optional<platform::PropertyValue>& current, const T& defaultValue) {
        auto value = current ? Coding::decode(*current) : std::nullopt;
        if (value) return *std::move(value);
        if constexpr (requires { Coding::reportDefault(); }) Coding::reportDefault();
        return defaultValue;
    }
    static std::optional<platform::PropertyValue> stored(const T& value) {
        if (detail::isNil(value)) return std::nullopt;
        return Coding::encode(value);
    }

    std::string key_;
    T defaultValue_;
    bool isShared_;
    platform::DefaultsDomainRef userDefaults_;
};

}  // namespace hbr

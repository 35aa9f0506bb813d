#pragma once

#include <HbrUtils/DefaultsDomains.h>
#include <HbrUtils/JsonCoding.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace hbr {

/// Logs the one message for a stored list that is absent or cannot be read.
void logUnreadablePersistedRules();

/// One setting whose value is stored as a data block of JSON.
template <class T>
class CodableUserDefault {
  public:
    CodableUserDefault(std::string key, T defaultValue, bool isShared, const DefaultsDomains& domains)
        : key_(std::move(key)),
          defaultValue_(std::move(defaultValue)),
          isShared_(isShared),
          userDefaults_(domains.domain(isShared)) {}

    const std::string& key() const { return key_; }
    const T& defaultValue() const { return defaultValue_; }
    bool isShared() const { return isShared_; }
    const platform::DefaultsDomainRef& userDefaults() const { return userDefaults_; }

    T get() const { return read(userDefaults_->value(key_)); }
    /// A value that cannot be encoded removes the key. False when the domain could not be written.
    bool set(const T& value) const { return userDefaults_->setValue(key_, stored(value)); }
    /// Reads, changes and writes under the domain's lock, so that no other writer is lost.
    bool update(const std::function<void(T&)>& change) const {
        return userDefaults_->update(key_, [&](const std::optional<platform::PropertyValue>& current) {
            T value = read(current);
            change(value);
            return stored(value);
        });
    }

  private:
    T read(const std::optional<platform::PropertyValue>& current) const {
        if (const platform::Data* data = current ? current->asData() : nullptr) {
            try {
                return decodeJsonData<T>(*data);
            } catch (const platform::DecodingError&) {
            }
        }
        logUnreadablePersistedRules();
        return defaultValue_;
    }
    static std::optional<platform::PropertyValue> stored(const T& value) { return encodeJsonData(value); }

    std::string key_;
    T defaultValue_;
    bool isShared_;
    platform::DefaultsDomainRef userDefaults_;
};

}  // namespace hbr

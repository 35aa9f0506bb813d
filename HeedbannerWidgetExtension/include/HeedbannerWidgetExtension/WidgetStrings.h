#pragma once

#include <HbrLocalization/StringBundle.h>
#include <System/Environment.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace hbr {

/// The extension's own texts, keys beginning with "Widget.", in the user's language. A missing
/// text is English; a key that English lacks as well is its own text. Safe from any thread.
class WidgetStrings {
  public:
    static constexpr std::string_view bundleName = "HeedbannerWidgetExtension.bundle";

    explicit WidgetStrings(platform::EnvironmentRef environment);

    /// BCP 47 tag of the language in use.
    std::string language() const;
    std::string text(std::string_view key) const;
    /// The key's text in its form for `count`, the argument of "%i".
    std::string counted(std::string_view key, std::size_t count) const;

  private:
    std::shared_ptr<const StringBundle> bundle_;
    platform::EnvironmentRef environment_;
};

}  // namespace hbr

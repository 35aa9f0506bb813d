#pragma once

#include <Foundation/Environment.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace hbr {

/// The extension's own texts, keys beginning with "Widget.": one JSON table a language ("en.json") in
/// HeedbannerWidgetExtension.bundle. The first of the user's languages that has a table is taken, a key
/// that it lacks comes from English, an unknown key stands for itself. Immutable.
class WidgetStrings {
  public:
    static constexpr std::string_view bundleName = "HeedbannerWidgetExtension.bundle";

    explicit WidgetStrings(const platform::Environment& environment);

    std::string text(std::string_view key) const;
    /// The text with "%i" replaced by the count; KEY.one for 1, else KEY.other.
    std::string counted(std::string_view key, std::size_t count) const;

  private:
    std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace hbr

#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Why a text is no template: says what to type instead.
class TemplateRefusal : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A line for a bar with placeholders in it: "{title}, {when}"; "{{" and "}}" stand for braces.
class StatusTemplate {
  public:
    struct Placeholder {
        std::string_view name;
        std::string_view meaning;
    };
    static const std::vector<Placeholder>& placeholders();

    /// Throws TemplateRefusal.
    explicit StatusTemplate(std::string_view text);

    using Values = std::map<std::string, std::string, std::less<>>;
    /// Values go through `escape`, the template's own text stands as it is. With `maxLength` the title is
    /// shortened, and where that is not enough the other values from the last one on, until the line has so
    /// many characters; markup ("<b>") in the template's own text is not counted.
    std::string text(const Values& values, const std::function<std::string(std::string_view)>& escape,
                     std::optional<std::size_t> maxLength = {}) const;

  private:
    struct Piece {
        /// A placeholder's name, else text.
        bool isPlaceholder = false;
        std::string text;
    };
    std::vector<Piece> pieces_;
};

/// Cut to so many characters, the last of them an ellipsis.
std::string shortened(std::string_view text, std::size_t maxLength);

}  // namespace hbr

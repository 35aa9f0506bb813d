#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// What is wrong with the text of a template.
struct TemplateError {
    enum class Kind { unknownPlaceholder, unclosedBrace };

    Kind kind;
    /// The placeholder's name; the text from the brace on.
    std::string text;
};

/// A line for a bar with placeholders: "{title}, {when}". "{{" and "}}" are braces.
class StatusTemplate {
  public:
    struct Placeholder {
        std::string_view name;
        std::string_view meaning;
    };
    static const std::vector<Placeholder>& placeholders();

    /// Throws TemplateError.
    explicit StatusTemplate(std::string_view text);

    using Values = std::map<std::string, std::string, std::less<>>;
    /// Values go through `escape`; the template's own text is printed unchanged. A line of more than
    /// `maxLength` characters is shortened: first the title, then the other values, the last one first.
    /// Markup ("<b>") in the template's own text is not counted.
    std::string text(const Values& values, const std::function<std::string(std::string_view)>& escape,
                     std::optional<std::size_t> maxLength = {}) const;

  private:
    struct Piece {
        /// `text` is a placeholder's name.
        bool isPlaceholder = false;
        std::string text;
    };
    std::vector<Piece> pieces_;
};

/// A longer text is cut to that many characters, the last of them an ellipsis.
std::string shortened(std::string_view text, std::size_t maxLength);

}  // namespace hbr

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A person's name in its parts; an empty text is an absent part.
struct PersonNameComponents {
    std::string namePrefix = {};
    std::string givenName = {};
    std::string middleName = {};
    std::string familyName = {};
    std::string nameSuffix = {};

    friend bool operator==(const PersonNameComponents&, const PersonNameComponents&) = default;
};

/// Writes and reads names. Which part comes first, what is between the parts and what the initials are
/// follows the name's own script, not the user's language: "John Harper" is JH, "山田太郎" 山田, "محمد علي"
/// "م ع". Stateless, safe from any thread.
class PersonNameComponentsFormatter {
  public:
    enum class Style {
        /// Given and family name.
        default_,
        /// The initials, in capitals.
        abbreviated
    };

    constexpr explicit PersonNameComponentsFormatter(Style style) : style_(style) {}

    /// Empty when there is neither a given nor a family name.
    std::string string(const PersonNameComponents& components) const;
    /// Finds the parts of a written name ("Harper, John Q.", "Dr. Maria José de la Cruz", "山田 太郎"). What
    /// cannot be divided (a single word, a mail address, "山田太郎") is the given name. Nothing for a text
    /// without letters.
    std::optional<PersonNameComponents> personNameComponents(std::string_view text) const;

  private:
    Style style_;
};

}  // namespace platform

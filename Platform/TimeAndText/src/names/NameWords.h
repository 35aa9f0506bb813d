#pragma once

#include <string_view>

namespace platform {

/// "Dr.", "Prof", "Mrs", "Frau" …: stands before a name without being part of it.
bool isTitle(std::string_view word);
/// "Jr.", "III", "PhD" …: follows a name.
bool isNameSuffix(std::string_view word);
/// "van", "de", "bin" …: begins a family name of several words.
bool isFamilyParticle(std::string_view word);

}  // namespace platform

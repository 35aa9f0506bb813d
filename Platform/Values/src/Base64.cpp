#include <TimeAndText/Ascii.h>
#include <Values/Base64.h>

#include <glib.h>

#include <memory>

namespace platform {

std::string encodedBase64(std::string_view bytes) {
    const std::unique_ptr<gchar, decltype(&g_free)> text(
        g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()), g_free);
    return text.get();
}

std::optional<std::string> decodedBase64(std::string_view text) {
    // GLib skips unknown characters and loses the end of a text without padding.
    constexpr std::size_t group = 4;
    constexpr std::size_t mostPadding = 2;
    std::string digits;
    digits.reserve(text.size() + mostPadding);
    std::size_t padding = 0;
    for (const char c : text) {
        if (asciiBlanks.find(c) != std::string_view::npos) continue;
        if (c == '=') {
            ++padding;
        } else if (padding > 0 || !(isAsciiAlphanumeric(c) || c == '+' || c == '/')) {
            return std::nullopt;
        } else {
            digits += c;
        }
    }
    if (digits.size() % group == 1 || padding > mostPadding) return std::nullopt;
    if (digits.empty()) return digits;
    digits.append((group - digits.size() % group) % group, '=');
    gsize size = 0;
    g_base64_decode_inplace(digits.data(), &size);
    digits.resize(size);
    return digits;
}

}  // namespace platform

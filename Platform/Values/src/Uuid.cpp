#include <TimeAndText/Ascii.h>
#include <Values/Uuid.h>

#include <cstring>
#include <random>

namespace platform {
namespace {

bool isDash(std::size_t place) {
    return place == 8 || place == 13 || place == 18 || place == 23;
}

}  // namespace

Uuid Uuid::random() {
    Uuid uuid;
    std::random_device device;  // the kernel's generator
    for (std::size_t i = 0; i < uuid.bytes_.size(); i += sizeof(std::uint32_t)) {
        std::uint32_t word = device();
        std::memcpy(uuid.bytes_.data() + i, &word, sizeof word);
    }
    uuid.bytes_[6] = static_cast<std::uint8_t>((uuid.bytes_[6] & 0x0F) | 0x40);  // RFC 4122: version 4
    uuid.bytes_[8] = static_cast<std::uint8_t>((uuid.bytes_[8] & 0x3F) | 0x80);
    return uuid;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid uuid;
    std::size_t digits = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (isDash(place)) {
            if (text[place] != '-') return std::nullopt;
            continue;
        }
        const int digit = hexDigitValue(text[place]);
        if (digit < 0) return std::nullopt;
        auto& byte = uuid.bytes_[digits / 2];
        byte = static_cast<std::uint8_t>((byte << 4) | digit);
        ++digits;
    }
    return uuid;
}

std::string Uuid::uuidString() const {
    std::string text;
    text.reserve(36);
    for (std::uint8_t byte : bytes_) {
        if (isDash(text.size())) text += '-';
        text += upperHexDigits[byte >> 4];
        text += upperHexDigits[byte & 0xF];
    }
    return text;
}

}  // namespace platform

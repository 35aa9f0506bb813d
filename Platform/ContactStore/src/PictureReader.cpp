#include "PictureReader.h"

#include "CardPicture.h"

#include <CalendarFiles/FileCache.h>
#include <CalendarFiles/TextDecoding.h>

#include <algorithm>

namespace platform {
namespace {

/// As many faces as one meeting shows.
constexpr std::size_t keptPictures = 32;

/// The text that the card had when its file was read; empty when it is another one by now.
std::string_view textOf(const ContactCard& card, std::string_view text) {
    if (card.end > text.size()) return {};
    const auto cardText = text.substr(card.begin, card.end - card.begin);
    const auto cards = readCards(cardText, [](int, const std::string&, const std::string&) {});
    const bool isSame = cards.size() == 1 && cards.front().uid == card.uid &&
                        cards.front().emails == card.emails && cards.front().names == card.names;
    return isSame ? cardText : std::string_view();
}

}  // namespace

std::optional<ImageBytes> PictureReader::read(const CardPlace& place) {
    if (!place.card().hasPicture) return std::nullopt;
    const auto& path = place.file->path;
    const auto begin = place.card().begin;
    const auto stamp = FileStamp::of(path);
    std::lock_guard lock(mutex_);
    const auto known = std::find_if(kept_.begin(), kept_.end(), [&](const Kept& one) {
        return one.begin == begin && one.stamp == stamp && one.file == path;
    });
    if (known != kept_.end()) return known->picture;
    const bool isFresh = stamp.isFresh();
    auto picture = fromFile(place);
    if (isFresh) return picture;
    kept_.push_back({path, begin, stamp, picture});
    if (kept_.size() > keptPictures) kept_.pop_front();
    return picture;
}

std::optional<ImageBytes> PictureReader::fromFile(const CardPlace& place) const {
    const auto& path = place.file->path;
    auto bytes = readForCache(path, *diagnostics_);
    if (!bytes) return std::nullopt;
    const std::string text = withoutUtf16(*std::move(bytes));
    const ContactCard& card = place.card();
    const auto complain = [&](int line, const std::string& property, const std::string& reason) {
        diagnostics_->report({.file = path, .line = line, .field = property, .text = reason});
    };
    auto picture = pictureOf(textOf(card, text), card.line, complain);
    if (!picture) return std::nullopt;
    auto image = ImageBytes::recognize(*std::move(picture));
    if (!image) complain(card.line, "PHOTO", "is not a picture in PNG, JPEG, GIF or WebP; left out");
    if (image && image->pixelSize() && image->isCostly()) {
        const auto size = *image->pixelSize();
        complain(card.line, "PHOTO",
                 "takes too long to decode (" + std::to_string(size.width) + " × " +
                     std::to_string(size.height) + " pixels); left out");
        return std::nullopt;
    }
    return image;
}

}  // namespace platform

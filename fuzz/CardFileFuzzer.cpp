#include "Expect.h"

#include <CardPicture.h>
#include <ContactCard.h>
#include <TimeAndText/Text.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace platform;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto ignored = [](int line, const std::string&, const std::string&) {
        expect(line >= 0, "a complaint names a line");
    };
    std::size_t end = 0;
    for (const auto& card : readCards(text, ignored)) {
        expect(card.begin >= end && card.begin < card.end && card.end <= text.size(),
               "cards stand one behind the other in the text");
        end = card.end;
        for (const auto* one : {&card.uid, &card.givenName, &card.familyName})
            expect(isWellFormedUtf8(*one), "what is kept is UTF-8");
        for (const auto& name : card.names)
            expect(isWellFormedUtf8(name), "names are UTF-8");
        const auto picture =
            pictureOf(std::string_view(text).substr(card.begin, card.end - card.begin), card.line, ignored);
        expect(!picture || card.hasPicture, "only a card that has a picture gives one");
    }
    return 0;
}

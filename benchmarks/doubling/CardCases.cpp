#include "DoublingCases.h"
#include "Growing.h"

#include <array>
#include <string_view>
#include <utility>

namespace doubling {
namespace {

constexpr std::size_t lineLimit = std::size_t{14} << 20;
constexpr std::size_t fileSize = std::size_t{8} << 20;

constexpr std::array properties{"FN",    "N",    "NICKNAME",   "ORG",   "EMAIL",       "UID",
                                "PHOTO", "KIND", "X-ABSHOWAS", "AGENT", "item1.EMAIL", "X-OWN"};

/// Ways in which the value of a card's property can grow by its encoding.
constexpr Growth encodedGrowths[] = {
    {"base64", ";ENCODING=b:", "QUJD", ""},
    {"folded base64", ";ENCODING=BASE64:", "\r\n QUJDQUJDQUJDQUJD", ""},
    {"unfolded base64", ";ENCODING=BASE64:", "\r\nQUJDQUJDQUJDQUJD", ""},
    {"short lines of base64", ";BASE64:", "\r\nQ", ""},
    {"wrong base64", ";ENCODING=b:", "%", ""},
    {"a data address", ":data:image/jpeg;base64,", "QUJD", ""},
    {"quoted-printable", ";ENCODING=QUOTED-PRINTABLE:", "=C3=A9", ""},
    {"soft breaks", ";ENCODING=QUOTED-PRINTABLE:", "=C3=A9=\r\n", "x"},
    {"short soft breaks", ";QUOTED-PRINTABLE:", "a=\r\n", "x"},
    {"empty soft breaks", ";QUOTED-PRINTABLE:", "=\r\n", "x"},
    {"soft breaks behind an open quote", ";QUOTED-PRINTABLE;X=\":", "a=\r\n", "x"},
    {"folds of soft breaks", ";QUOTED-PRINTABLE:", "a=\r\n b", "x"},
    {"another character set", ";CHARSET=ISO-8859-1:", "\xE9", ""},
    {"a character set of escapes", ";CHARSET=ISO-2022-JP:", "\x1B$B$3\x1B(B", ""},
    {"a long character set", ";CHARSET=", "x", ":value"},
    {"names", ":", "Ann#, ", ""},
    {"components", ":", "Ann#;", ""},
    {"addresses", ":", "ann#@example.org,", ""},
    {"marks over letters", ":a", "\xCC\x81", ""},
    {"marks in disorder", ":a", "\xCC\x81\xCC\xA3", ""},
    {"letters of another script", ":", "\xE5\xB1\xB1", ""},
};

/// Lines of one card, and cards of one file.
constexpr std::pair<std::string_view, std::string_view> manyLines[] = {
    {"addresses", "EMAIL:ann#@example.org\r\n"},
    {"addresses alike", "EMAIL:ann@example.org\r\n"},
    {"nicknames", "NICKNAME:Ann #\r\n"},
    {"names", "FN:Ann #\r\n"},
    {"pictures", "PHOTO;ENCODING=b:QUJD\r\n"},
    {"pictures of several lines", "PHOTO;BASE64:\r\nQUJD\r\n\r\n"},
    {"agents", "AGENT:\r\nBEGIN:VCARD\r\nEND:VCARD\r\n"},
    {"open agents", "AGENT:\r\nBEGIN:VCARD\r\n"},
    {"own properties", "X-OWN-#:value\r\n"},
    {"lines without a property", "nonsense #\r\n"},
    {"unknown character sets", "NOTE;CHARSET=X#:value\r\n"},
    {"cards", "END:VCARD\r\nBEGIN:VCARD\r\nFN:Ann #\r\nEMAIL:ann#@example.org\r\n"},
    {"cards of one name", "END:VCARD\r\nBEGIN:VCARD\r\nFN:Ann Doe\r\nEMAIL:ann@example.org\r\n"},
    {"cards of one UID", "END:VCARD\r\nBEGIN:VCARD\r\nUID:1\r\nFN:Ann #\r\n"},
    {"cards without a name", "END:VCARD\r\nBEGIN:VCARD\r\n"},
    {"open cards", "BEGIN:VCARD\r\nFN:Ann #\r\n"},
    {"ends", "END:VCARD\r\n"},
};

std::string card(const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ann Doe\r\nEMAIL:ann@example.org\r\n" + lines + "END:VCARD\r\n";
}

}  // namespace

std::vector<Case> cardCases() {
    std::vector<Case> cases;
    for (const auto* property : properties) {
        const auto add = [&](const Growth& growth) {
            cases.push_back({"VCARD " + std::string(property) + ": " + std::string(growth.name),
                             Case::Kind::card, lineLimit, [=](std::size_t size) {
                                 return card(std::string(property).append(growth.before) +
                                             repeated(growth.piece, size) + std::string(growth.after) +
                                             "\r\n");
                             }});
        };
        for (const auto& growth : lineGrowths)
            add(growth);
        for (const auto& growth : encodedGrowths)
            add(growth);
    }
    for (const auto& [what, piece] : manyLines) {
        cases.push_back({"VCARD: many " + std::string(what), Case::Kind::card, fileSize,
                         [piece = piece](std::size_t size) { return card(repeated(piece, size)); }});
    }
    return cases;
}

}  // namespace doubling

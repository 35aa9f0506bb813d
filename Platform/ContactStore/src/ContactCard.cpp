#include "ContactCard.h"

#include <TimeAndText/PersonName.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <limits>

#include "CardLines.h"
#include "CardProperty.h"

namespace platform {
namespace {

constexpr std::string_view mailScheme = "mailto:";
/// Of addresses, and of nicknames, of one card: far more than anybody has.
constexpr std::size_t mostOfAKind = 1000;

/// The most wanted of a property's several values; the first of equally wanted ones.
template <class T>
class Preferred {
  public:
    void offer(int preference, T value) {
        if (preference >= preference_) return;
        preference_ = preference;
        value_ = std::move(value);
    }
    const T& value() const { return value_; }

  private:
    int preference_ = std::numeric_limits<int>::max();
    T value_ = {};
};

std::string component(const std::vector<std::string>& components, std::size_t index) {
    return index < components.size() ? components[index] : std::string();
}

/// Gathers the lines of one card.
class CardBuilder {
  public:
    CardBuilder(int line, std::size_t begin) {
        card_.line = line;
        card_.begin = begin;
    }

    int line() const { return card_.line; }

    void add(const CardProperty& property) {
        if (property.is("EMAIL")) {
            std::string email = property.text();
            if (equalIgnoringCase(std::string_view(email).substr(0, mailScheme.size()), mailScheme)) {
                email.erase(0, mailScheme.size());
            }
            keep(std::move(email), card_.emails);
        } else if (property.is("FN")) {
            formattedName_.offer(property.preference(), property.text());
        } else if (property.is("N")) {
            nameParts_.offer(property.preference(), property.components());
        } else if (property.is("NICKNAME")) {
            for (auto& name : property.list())
                keep(std::move(name), nicknames_);
        } else if (property.is("ORG")) {
            organization_.offer(property.preference(), component(property.components(), 0));
        } else if (property.is("UID")) {
            card_.uid = property.text();
        } else if (property.is("PHOTO")) {
            card_.hasPicture = true;
        } else if (property.is("KIND") || property.is("X-ADDRESSBOOKSERVER-KIND")) {
            isPerson_ = equalIgnoringCase(property.text(), "individual");
        } else if (property.is("X-ABSHOWAS")) {
            isPerson_ = !equalIgnoringCase(property.text(), "COMPANY");
        }
    }

    bool hasTooMany() const { return hasTooMany_; }

    /// Nothing when the card says neither a name nor an address.
    std::optional<ContactCard> finish(std::size_t end) {
        card_.end = end;
        setNames();
        if (card_.names.empty() && card_.emails.empty()) return std::nullopt;
        return std::move(card_);
    }

  private:
    void keep(std::string text, std::vector<std::string>& list) {
        if (text.empty()) return;
        if (list.size() == mostOfAKind) {
            hasTooMany_ = true;
        } else {
            list.push_back(std::move(text));
        }
    }

    void setNames() {
        const auto& parts = nameParts_.value();
        const auto& formatted = formattedName_.value();
        const auto& organization = organization_.value();
        const bool hasParts = !component(parts, 0).empty() || !component(parts, 1).empty();
        const bool isOrganization = !organization.empty() && !hasParts &&
                                    (formatted.empty() || canonicallyEqual(formatted, organization));
        if (hasParts && isPerson_) {
            card_.familyName = component(parts, 0);
            card_.givenName = component(parts, 1);
        } else if (isPerson_ && !isOrganization) {
            divide(!formatted.empty() || nicknames_.empty() ? formatted : nicknames_.front());
        }
        const auto called = [&](std::string name) {
            if (!name.empty()) card_.names.push_back(std::move(name));
        };
        called(formatted);
        if (hasParts) called(trimmed(component(parts, 1) + " " + component(parts, 0)));
        for (const auto& name : nicknames_)
            called(name);
        if (isOrganization || !isPerson_ || card_.names.empty()) called(organization);
    }

    void divide(const std::string& written) {
        constexpr PersonNameComponentsFormatter formatter(PersonNameComponentsFormatter::Style::default_);
        const auto name = formatter.personNameComponents(written);
        if (!name) return;
        card_.givenName = name->givenName + (name->middleName.empty() ? "" : " ") + name->middleName;
        card_.familyName = name->familyName;
    }

    ContactCard card_;
    bool isPerson_ = true;
    bool hasTooMany_ = false;
    Preferred<std::string> formattedName_;
    Preferred<std::vector<std::string>> nameParts_;
    Preferred<std::string> organization_;
    std::vector<std::string> nicknames_;
};

bool isCardBound(const CardProperty& property, std::string_view bound) {
    return property.is(bound) && equalIgnoringCase(trimmedAscii(property.content().value), "VCARD");
}

class CardReader {
  public:
    CardReader(std::string_view text, const CardComplaint& complain) : lines_(text), complain_(complain) {}

    std::vector<ContactCard> read() {
        while (lines_.next())
            readLine();
        if (open_) complain_(open_->line(), "VCARD", "has no END:VCARD; the card is left out");
        return std::move(cards_);
    }

  private:
    void readLine() {
        if (trimmedAscii(lines_.line()).empty()) return;
        if (!lines_.content()) {
            if (open_) complain_(lines_.number(), "", "is not a property of a card; the line is left out");
            return;
        }
        const CardProperty property(*lines_.content());
        if (isCardBound(property, "BEGIN")) {
            begin();
        } else if (isCardBound(property, "END")) {
            end();
        } else if (open_ && agentDepth_ == 0) {
            addProperty(property);
        }
    }

    void begin() {
        // The oldest cards hold the card of an agent inside.
        if (open_ && (wasAgent_ || agentDepth_ > 0)) {
            ++agentDepth_;
            return;
        }
        if (open_) complain_(open_->line(), "VCARD", "has no END:VCARD; the card is left out");
        open_.emplace(lines_.number(), lines_.begin());
    }

    void end() {
        if (agentDepth_ > 0) {
            --agentDepth_;
            wasAgent_ = false;
            return;
        }
        if (!open_) {
            complain_(lines_.number(), "VCARD", "END:VCARD without its BEGIN");
            return;
        }
        if (open_->hasTooMany()) {
            complain_(open_->line(), "VCARD",
                      "has more than " + std::to_string(mostOfAKind) +
                          " addresses or nicknames; the others are left out");
        }
        if (auto card = open_->finish(lines_.end())) {
            cards_.push_back(*std::move(card));
        } else {
            complain_(open_->line(), "VCARD", "has neither a name nor an address; the card is left out");
        }
        open_.reset();
    }

    void addProperty(const CardProperty& property) {
        wasAgent_ = property.is("AGENT") && trimmedAscii(property.content().value).empty();
        if (lines_.tooLong()) {
            complain_(lines_.number(), std::string(property.name()), "is too long; left out");
            return;
        }
        if (!property.content().parameters.empty() && property.hasUnknownCharset()) {
            complain_(lines_.number(), std::string(property.name()), "names an unknown character set");
        }
        open_->add(property);
    }

    CardLines lines_;
    const CardComplaint& complain_;
    std::vector<ContactCard> cards_;
    std::optional<CardBuilder> open_;
    bool wasAgent_ = false;
    int agentDepth_ = 0;
};

}  // namespace

std::vector<ContactCard> readCards(std::string_view text, const CardComplaint& complain) {
    return CardReader(text, complain).read();
}

}  // namespace platform

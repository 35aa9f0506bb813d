#include "PropertyListXml.h"

#include <TimeAndText/Ascii.h>
#include <TimeAndText/Date.h>
#include <Values/Base64.h>

#include <glib.h>

#include <charconv>
#include <memory>
#include <string>

namespace platform {
namespace {

template <class Number, class... Format>
std::optional<Number> numberOf(std::string_view text, Format... format) {
    text = trimmedAscii(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    Number number{};
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, format...);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<PropertyValue> integerOf(std::string_view text) {
    if (auto number = numberOf<std::int64_t>(text, 10)) return *number;
    // Above 2^63 - 1 only the other number kind is left.
    if (auto number = numberOf<std::uint64_t>(text, 10)) return static_cast<double>(*number);
    return std::nullopt;
}

std::optional<PropertyValue> dataOf(std::string_view text) {
    const auto bytes = decodedBase64(text);
    if (!bytes) return std::nullopt;
    return Data(bytes->begin(), bytes->end());
}

std::optional<PropertyValue> leafOf(std::string_view element, std::string& text) {
    if (element == "string") return std::move(text);
    if (element == "integer") return integerOf(text);
    if (element == "data") return dataOf(text);
    if (element == "true" || element == "false") {
        if (!trimmedAscii(text).empty()) return std::nullopt;
        return element == "true";
    }
    if (element == "real") {
        if (auto number = numberOf<double>(text, std::chars_format::general)) return *number;
    } else if (element == "date") {
        if (auto date = parseRfc3339(trimmedAscii(text))) return date->timeIntervalSinceReferenceDate();
    }
    return std::nullopt;
}

/// Takes the parser's events; any answer of false means that the document is not a property list.
class PropertyListBuilder {
  public:
    bool start(std::string_view element) {
        if (!hasPlist_) {
            hasPlist_ = true;
            return element == "plist";
        }
        if (isInLeaf_ || open_.size() == deepestNesting || (open_.empty() && root_)) return false;
        if (element == "key") {
            if (open_.empty() || !open_.back().isDictionary || open_.back().key) return false;
        } else if (!open_.empty() && open_.back().isDictionary && !open_.back().key) {
            return false;
        }
        if (element == "dict" || element == "array") {
            open_.emplace_back().isDictionary = element == "dict";
        } else {
            isInLeaf_ = true;
            text_.clear();
        }
        return true;
    }

    bool text(std::string_view piece) {
        if (isInLeaf_) {
            text_ += piece;
            return true;
        }
        return trimmedAscii(piece).empty();
    }

    bool end(std::string_view element) {
        if (element == "plist") return root_.has_value();
        if (element == "key") {
            isInLeaf_ = false;
            open_.back().key = std::move(text_);
            return true;
        }
        if (!isInLeaf_) {
            Container container = std::move(open_.back());
            open_.pop_back();
            if (container.key) return false;  // without its value
            return container.isDictionary ? add(std::move(container.members))
                                          : add(std::move(container.elements));
        }
        isInLeaf_ = false;
        auto value = leafOf(element, text_);
        return value && add(std::move(*value));
    }

    std::optional<PropertyValue> take() { return std::move(root_); }

  private:
    struct Container {
        bool isDictionary = false;
        std::optional<std::string> key;
        PropertyDictionary members;
        PropertyArray elements;
    };

    bool add(PropertyValue value) {
        if (open_.empty()) {
            root_ = std::move(value);
        } else if (Container& top = open_.back(); top.isDictionary) {
            top.members.set(*top.key, std::move(value));
            top.key.reset();
        } else {
            top.elements.push_back(std::move(value));
        }
        return true;
    }

    bool hasPlist_ = false;
    bool isInLeaf_ = false;
    std::string text_;
    std::vector<Container> open_;
    std::optional<PropertyValue> root_;
};

void require(bool isAccepted, GError** error) {
    if (!isAccepted)
        g_set_error_literal(error, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, "no property list");
}

constexpr GMarkupParser events = {
    [](GMarkupParseContext*, const char* element, const char**, const char**, void* builder, GError** error) {
        require(static_cast<PropertyListBuilder*>(builder)->start(element), error);
    },
    [](GMarkupParseContext*, const char* element, void* builder, GError** error) {
        require(static_cast<PropertyListBuilder*>(builder)->end(element), error);
    },
    [](GMarkupParseContext*, const char* text, gsize size, void* builder, GError** error) {
        require(static_cast<PropertyListBuilder*>(builder)->text({text, size}), error);
    },
    nullptr,
    nullptr,
};

}  // namespace

std::optional<PropertyValue> readXmlPropertyList(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (text.empty()) return std::nullopt;
    PropertyListBuilder builder;
    std::unique_ptr<GMarkupParseContext, decltype(&g_markup_parse_context_free)> context(
        g_markup_parse_context_new(&events, G_MARKUP_TREAT_CDATA_AS_TEXT, &builder, nullptr),
        g_markup_parse_context_free);
    if (!g_markup_parse_context_parse(context.get(), text.data(), static_cast<gssize>(text.size()),
                                      nullptr) ||
        !g_markup_parse_context_end_parse(context.get(), nullptr))
        return std::nullopt;
    return builder.take();
}

}  // namespace platform

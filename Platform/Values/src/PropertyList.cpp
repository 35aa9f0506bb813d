#include "PropertyListXml.h"

#include <TimeAndText/Date.h>
#include <TimeAndText/Text.h>
#include <Values/Base64.h>
#include <Values/PropertyList.h>

#include <plist/plist.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>

namespace platform {
namespace {

struct PlistDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, PlistDeleter>;

std::optional<PropertyValue> valueOf(plist_t node, std::size_t depth);

std::optional<PropertyValue> arrayOf(plist_t node, std::size_t depth) {
    PropertyArray elements;
    for (uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        auto element = valueOf(plist_array_get_item(node, i), depth + 1);
        if (!element) return std::nullopt;
        elements.push_back(std::move(*element));
    }
    return elements;
}

std::optional<PropertyValue> dictionaryOf(plist_t node, std::size_t depth) {
    PropertyDictionary members;
    plist_dict_iter start = nullptr;
    plist_dict_new_iter(node, &start);
    std::unique_ptr<void, decltype(&free)> iterator(start, free);
    while (true) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &key, &item);
        std::unique_ptr<char, decltype(&free)> name(key, free);
        if (!item) return members;
        auto value = valueOf(item, depth + 1);
        if (!key || !value) return std::nullopt;
        members.set(key, std::move(*value));
    }
}

std::optional<PropertyValue> valueOf(plist_t node, std::size_t depth) {
    if (!node || depth > deepestNesting) return std::nullopt;
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            uint8_t value = 0;
            plist_get_bool_val(node, &value);
            return value != 0;
        }
        case PLIST_UINT: {
            // The library knows no sign: negative numbers come as their two's complement.
            uint64_t value = 0;
            plist_get_uint_val(node, &value);
            return static_cast<std::int64_t>(value);
        }
        case PLIST_REAL: {
            double value = 0;
            plist_get_real_val(node, &value);
            return value;
        }
        case PLIST_DATE: {
            int32_t seconds = 0;
            int32_t microseconds = 0;
            plist_get_date_val(node, &seconds, &microseconds);
            return seconds + microseconds * 1e-6;
        }
        case PLIST_STRING: {
            uint64_t size = 0;
            const char* text = plist_get_string_ptr(node, &size);
            return std::string(text, size);
        }
        case PLIST_DATA: {
            uint64_t size = 0;
            const char* bytes = plist_get_data_ptr(node, &size);
            return Data(bytes, bytes + size);
        }
        case PLIST_ARRAY:
            return arrayOf(node, depth);
        case PLIST_DICT:
            return dictionaryOf(node, depth);
        default:
            return std::nullopt;
    }
}

/// Writes the XML form itself: the library's writer cuts texts at a NUL and loses carriage returns.
class XmlWriter {
  public:
    void write(const PropertyValue& value) {
        std::visit([this](const auto& content) { put(content); }, value.storage());
    }
    std::string take() { return std::move(text_); }

  private:
    void put(bool value) { line(value ? "<true/>" : "<false/>"); }
    void put(std::int64_t value) { line("<integer>" + std::to_string(value) + "</integer>"); }
    void put(double value) {
        char digits[32];
        auto end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        line("<real>" + std::string(digits, end) + "</real>");
    }
    void put(const std::string& value) { line("<string>" + escaped(value) + "</string>"); }
    void put(const Data& value) {
        line("<data>" + encodedBase64({reinterpret_cast<const char*>(value.data()), value.size()}) +
             "</data>");
    }
    void put(const PropertyArray& elements) {
        if (elements.empty()) return line("<array/>");
        line("<array>");
        ++depth_;
        for (const PropertyValue& element : elements)
            write(element);
        --depth_;
        line("</array>");
    }
    void put(const PropertyDictionary& members) {
        if (members.empty()) return line("<dict/>");
        line("<dict>");
        ++depth_;
        for (const auto& [key, value] : members) {
            line("<key>" + escaped(key) + "</key>");
            write(value);
        }
        --depth_;
        line("</dict>");
    }
    void line(std::string_view content) {
        text_.append(depth_, '\t');
        (text_ += content) += '\n';
    }

    /// Characters that XML has no way to write become U+FFFD.
    static std::string escaped(std::string_view value) {
        std::string text;
        for (char c : sanitizedUtf8(value)) {
            switch (c) {
                case '&':
                    text += "&amp;";
                    break;
                case '<':
                    text += "&lt;";
                    break;
                case '>':
                    text += "&gt;";
                    break;
                case '\r':
                    text += "&#13;";
                    break;
                case '\t':
                case '\n':
                    text += c;
                    break;
                default:
                    if (static_cast<unsigned char>(c) < 0x20) {
                        text += "\xEF\xBF\xBD";
                    } else {
                        text += c;
                    }
            }
        }
        return text;
    }

    std::string text_;
    std::size_t depth_ = 0;
};

}  // namespace

std::optional<PropertyValue> readPropertyList(std::span<const std::uint8_t> bytes) {
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!text.starts_with("bplist")) return readXmlPropertyList(text);
    if (text.size() > UINT32_MAX) return std::nullopt;
    plist_t node = nullptr;
    plist_from_bin(text.data(), static_cast<uint32_t>(text.size()), &node);
    Plist owner(node);
    return valueOf(node, 0);
}

std::string writeXmlPropertyList(const PropertyValue& root) {
    XmlWriter writer;
    writer.write(root);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           writer.take() + "</plist>\n";
}

}  // namespace platform

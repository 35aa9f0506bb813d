#include <Values/JsonText.h>
#include <Values/JsonValue.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_map>

namespace platform {
namespace {

/// Deeper text is refused: reading, writing and destroying a value recurse.
constexpr std::size_t deepestNesting = 512;

/// Builds the value from the parser's events.
class JsonBuilder final : public nlohmann::json_sax<nlohmann::json> {
  public:
    bool null() override { return add(JsonValue()); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(std::int64_t{value}); }
    bool number_unsigned(number_unsigned_t value) override {
        if (value > static_cast<number_unsigned_t>(INT64_MAX)) return add(static_cast<double>(value));
        return add(static_cast<std::int64_t>(value));
    }
    bool number_float(number_float_t value, const string_t&) override { return add(value); }
    bool string(string_t& value) override { return add(std::move(value)); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open(JsonValue::object()); }
    bool key(string_t& value) override {
        open_.back().key = std::move(value);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(JsonValue::array()); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

    JsonValue take() { return std::move(root_); }

  private:
    struct Container {
        bool isObject = false;
        JsonValue::Array elements;
        JsonValue::Object members;
        std::unordered_map<std::string, std::size_t> places;
        std::string key;
    };

    bool open(const JsonValue& empty) {
        if (open_.size() == deepestNesting) return false;
        open_.emplace_back().isObject = empty.asObject() != nullptr;
        return true;
    }
    bool close() {
        Container container = std::move(open_.back());
        open_.pop_back();
        return container.isObject ? add(std::move(container.members)) : add(std::move(container.elements));
    }
    bool add(JsonValue value) {
        if (open_.empty()) {
            root_ = std::move(value);
        } else if (Container& top = open_.back(); !top.isObject) {
            top.elements.push_back(std::move(value));
        } else if (auto [place, isNew] = top.places.try_emplace(top.key, top.members.size()); isNew) {
            top.members.emplace_back(std::move(top.key), std::move(value));
        } else {
            top.members[place->second].second = std::move(value);
        }
        return true;
    }

    std::vector<Container> open_;
    JsonValue root_;
};

class Writer {
  public:
    explicit Writer(int indent) : indent_(indent) {}

    void write(const JsonValue& value) {
        std::visit([this](const auto& content) { put(content); }, value.storage());
    }
    std::string take() { return std::move(text_); }

  private:
    void put(std::nullptr_t) { text_ += "null"; }
    void put(bool value) { text_ += value ? "true" : "false"; }
    void put(std::int64_t value) {
        char digits[24];
        text_.append(digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr);
    }
    void put(double value) {
        if (!std::isfinite(value)) return put(nullptr);  // JSON has no word for it
        char digits[400];                                // the smallest subnormal takes 327 characters
        auto end = std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::fixed).ptr;
        text_.append(digits, end);
        if (std::find(digits, end, '.') == end) text_ += ".0";
    }
    void put(const std::string& value) {
        bool isPlain =
            std::ranges::all_of(value, [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
        if (isPlain) {
            (text_ += '"').append(value) += '"';
        } else {
            text_ += nlohmann::json(value).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        }
    }
    void put(const JsonValue::Array& elements) {
        surrounded('[', ']', elements, [this](const JsonValue& element) { write(element); });
    }
    void put(const JsonValue::Object& members) {
        surrounded('{', '}', members, [this](const auto& member) {
            put(member.first);
            text_ += indent_ < 0 ? ":" : ": ";
            write(member.second);
        });
    }
    template <class Items, class WriteItem>
    void surrounded(char open, char close, const Items& items, WriteItem writeItem) {
        text_ += open;
        ++depth_;
        for (bool isFirst = true; const auto& item : items) {
            if (!isFirst) text_ += ',';
            isFirst = false;
            breakLine();
            writeItem(item);
        }
        --depth_;
        if (!items.empty()) breakLine();
        text_ += close;
    }
    void breakLine() {
        if (indent_ < 0) return;
        text_ += '\n';
        text_.append(static_cast<std::size_t>(indent_) * depth_, ' ');
    }

    int indent_;
    std::size_t depth_ = 0;
    std::string text_;
};

}  // namespace

std::optional<JsonValue> parseJson(std::string_view text) {
    JsonBuilder builder;
    if (!nlohmann::json::sax_parse(text, &builder)) return std::nullopt;
    return builder.take();
}

std::string writeJson(const JsonValue& value, int indent) {
    Writer writer(indent);
    writer.write(value);
    return writer.take();
}

}  // namespace platform

#include <Values/Toml.h>

#include <toml++/toml.h>

#include <algorithm>
#include <memory>
#include <sstream>

namespace platform {
namespace {

PropertyDictionary dictionaryOf(const toml::table& table);

template <class DateOrTime>
std::string textOf(const DateOrTime& value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

PropertyValue valueOf(const toml::node& node) {
    switch (node.type()) {
        case toml::node_type::table:
            return dictionaryOf(*node.as_table());
        case toml::node_type::array: {
            PropertyArray elements;
            for (const toml::node& element : *node.as_array())
                elements.push_back(valueOf(element));
            return elements;
        }
        case toml::node_type::string:
            return node.as_string()->get();
        case toml::node_type::integer:
            return node.as_integer()->get();
        case toml::node_type::floating_point:
            return node.as_floating_point()->get();
        case toml::node_type::boolean:
            return node.as_boolean()->get();
        case toml::node_type::date:
            return textOf(node.as_date()->get());
        case toml::node_type::time:
            return textOf(node.as_time()->get());
        default:
            return textOf(node.as_date_time()->get());
    }
}

PropertyDictionary dictionaryOf(const toml::table& table) {
    // The library sorts keys by name; the document's own order is in their places.
    std::vector<std::pair<const toml::key*, const toml::node*>> entries;
    for (const auto& [key, node] : table)
        entries.emplace_back(&key, &node);
    std::ranges::stable_sort(entries, {}, [](const auto& entry) {
        const auto& place = entry.first->source().begin;
        return std::pair(place.line, place.column);
    });
    PropertyDictionary dictionary;
    for (const auto& [key, node] : entries)
        dictionary.set(key->str(), valueOf(*node));
    return dictionary;
}

bool isTableArray(const PropertyValue& value) {
    const PropertyArray* elements = value.asArray();
    return elements && !elements->empty() && std::ranges::all_of(*elements, [](const PropertyValue& element) {
               return element.asDictionary();
           });
}

/// The library's node for a value.
std::unique_ptr<toml::node> nodeOf(const PropertyValue& value) {
    struct Convert {
        using Node = std::unique_ptr<toml::node>;

        Node operator()(bool flag) const { return std::make_unique<toml::value<bool>>(flag); }
        Node operator()(std::int64_t number) const {
            return std::make_unique<toml::value<std::int64_t>>(number);
        }
        Node operator()(double number) const { return std::make_unique<toml::value<double>>(number); }
        Node operator()(const std::string& text) const {
            return std::make_unique<toml::value<std::string>>(text);
        }
        Node operator()(const Data& bytes) const {
            auto array = std::make_unique<toml::array>();
            for (std::uint8_t byte : bytes)
                array->push_back(std::int64_t{byte});
            return array;
        }
        Node operator()(const PropertyArray& elements) const {
            auto array = std::make_unique<toml::array>();
            for (const PropertyValue& element : elements)
                nodeOf(element)->visit([&array](auto& node) { array->push_back(std::move(node)); });
            return array;
        }
        Node operator()(const PropertyDictionary& dictionary) const {
            auto table = std::make_unique<toml::table>();
            for (const auto& entry : dictionary)
                nodeOf(entry.second)->visit([&](auto& node) { table->insert(entry.first, std::move(node)); });
            table->is_inline(true);
            return table;
        }
    };
    return std::visit(Convert{}, value.storage());
}

/// One line "key = value", escaped by the library.
std::string line(const std::string& key, const PropertyValue& value) {
    toml::table single;
    nodeOf(value)->visit([&](auto& node) { single.insert(key, std::move(node)); });
    std::ostringstream text;
    text << toml::toml_formatter{single, toml::format_flags::allow_unicode_strings};
    return text.str() + '\n';
}

std::string quotedKey(const std::string& key) {
    std::string assignment = line(key, 0);
    return assignment.substr(0, assignment.rfind(" = "));
}

/// Own loop, as the library's writer would sort the keys of every table.
void write(const PropertyDictionary& dictionary, const std::string& path, std::string& text) {
    for (const auto& [key, value] : dictionary) {
        if (!value.asDictionary() && !isTableArray(value)) text += line(key, value);
    }
    auto writeTable = [&](const PropertyDictionary& table, const std::string& name, const char* open,
                          const char* close) {
        if (!text.empty()) text += '\n';
        ((text += open) += name) += close;
        text += '\n';
        write(table, name, text);
    };
    for (const auto& [key, value] : dictionary) {
        std::string name = path.empty() ? quotedKey(key) : path + '.' + quotedKey(key);
        if (const PropertyDictionary* table = value.asDictionary()) {
            writeTable(*table, name, "[", "]");
        } else if (isTableArray(value)) {
            for (const PropertyValue& element : *value.asArray())
                writeTable(*element.asDictionary(), name, "[[", "]]");
        }
    }
}

}  // namespace

std::optional<PropertyDictionary> parseToml(std::string_view text, TomlError& error) {
    try {
        return dictionaryOf(toml::parse(text));
    } catch (const toml::parse_error& failure) {
        error = {static_cast<int>(failure.source().begin.line), std::string(failure.description())};
        return std::nullopt;
    }
}

std::string writeToml(const PropertyDictionary& root) {
    std::string text;
    write(root, "", text);
    return text;
}

}  // namespace platform

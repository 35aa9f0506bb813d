#include <Foundation/Toml.h>

#include <toml++/toml.h>

#include <algorithm>
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

toml::table inlineTable(const PropertyDictionary& dictionary);

/// Puts the library's node for `value` in by way of `insert`, which takes any of the library's types.
template <class Insert>
void convert(const PropertyValue& value, const Insert& insert) {
    if (auto* flag = std::get_if<bool>(&value.storage())) {
        insert(*flag);
    } else if (auto* integer = std::get_if<std::int64_t>(&value.storage())) {
        insert(*integer);
    } else if (auto* number = std::get_if<double>(&value.storage())) {
        insert(*number);
    } else if (auto* text = value.asString()) {
        insert(*text);
    } else if (auto* dictionary = value.asDictionary()) {
        insert(inlineTable(*dictionary));
    } else {
        toml::array elements;
        if (auto* array = value.asArray()) {
            for (const PropertyValue& element : *array)
                convert(element, [&elements](auto&& node) { elements.push_back(node); });
        } else {
            for (std::uint8_t byte : *value.asData())
                elements.push_back(std::int64_t{byte});
        }
        insert(std::move(elements));
    }
}

toml::table inlineTable(const PropertyDictionary& dictionary) {
    toml::table table;
    for (const auto& [key, value] : dictionary) {
        const std::string& name = key;
        convert(value, [&](auto&& node) { table.insert(name, node); });
    }
    table.is_inline(true);
    return table;
}

/// One line "key = value", escaped by the library.
std::string line(const std::string& key, const PropertyValue& value) {
    toml::table single;
    convert(value, [&](auto&& node) { single.insert(key, node); });
    std::ostringstream text;
    text << toml::toml_formatter{single, toml::format_flags::none};
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

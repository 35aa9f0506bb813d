// Makes the accessors of L10n.h and the English table from the catalogue of texts.
// Usage: l10n-generator CATALOGUE HEADER SOURCE TABLE

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Entry {
    std::string key;
    std::vector<std::string> arguments;
    std::string text;
};

/// A form of another key's text for some numbers ("KEY#one"): only the table has it.
bool isPluralForm(const Entry& entry) {
    return entry.key.find('#') != std::string::npos;
}

struct Scope {
    std::map<std::string, Scope> scopes;
    std::map<std::string, const Entry*> accessors;
};

bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char lower(char c) {
    return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

std::vector<std::string> split(const std::string& text, const std::string& separator) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator, start)) != std::string::npos;
         start = end + separator.size())
        pieces.push_back(text.substr(start, end - start));
    pieces.push_back(text.substr(start));
    return pieces;
}

std::string scopeName(std::string component) {
    if (component == "iOS") return "Ios";
    component[0] = upper(component[0]);
    return component;
}

std::string accessorName(const std::string& component) {
    static const std::set<std::string> keywords = {
        "auto",   "bool", "break", "case", "catch",  "char",    "class",  "const",   "continue", "default",
        "delete", "do",   "else",  "enum", "export", "false",   "float",  "for",     "friend",   "if",
        "int",    "long", "new",   "not",  "or",     "private", "public", "return",  "short",    "static",
        "switch", "this", "throw", "true", "try",    "union",   "using",  "virtual", "void",     "while"};
    std::string name;
    for (std::size_t i = 0; i < component.size(); ++i) {
        if (component[i] != '_')
            name += component[i];
        else if (++i < component.size())
            name += upper(component[i]);
    }
    for (std::size_t i = 0; i < name.size() && isUpper(name[i]); ++i)
        name[i] = lower(name[i]);
    if (std::isdigit(static_cast<unsigned char>(name[0]))) name.insert(0, "_");
    if (keywords.contains(name)) name += '_';
    return name;
}

std::vector<std::string> placeholders(const std::string& text) {
    std::vector<std::string> kinds;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '%') continue;
        const char conversion = text[++i];
        if (conversion == '%') continue;
        if (conversion == '@')
            kinds.emplace_back("value");
        else if (conversion == 'd' || conversion == 'i')
            kinds.emplace_back("integer");
        else
            throw std::runtime_error(std::string("unknown placeholder %") + conversion);
    }
    return kinds;
}

Entry parseEntry(const std::string& line) {
    const auto equals = line.find(" = ");
    if (equals == std::string::npos) throw std::runtime_error("no \" = \"");
    Entry entry;
    const std::string head = line.substr(0, equals);
    const auto open = head.find(" (");
    entry.key = head.substr(0, open);
    if (entry.key.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._#") !=
            std::string::npos ||
        entry.key.empty())
        throw std::runtime_error("bad key \"" + entry.key + "\"");
    if (open != std::string::npos) {
        if (head.back() != ')') throw std::runtime_error("no closing parenthesis after the arguments");
        entry.arguments = split(head.substr(open + 2, head.size() - open - 3), ", ");
    }
    const auto lines = split(line.substr(equals + 3), "\\n");
    for (std::size_t i = 0; i < lines.size(); ++i)
        entry.text += (i ? "\n" : "") + lines[i];
    if (placeholders(entry.text) != entry.arguments)
        throw std::runtime_error("the placeholders of \"" + entry.key + "\" differ from its arguments");
    return entry;
}

std::vector<Entry> readCatalogue(const std::string& file) {
    std::ifstream in(file);
    if (!in) throw std::runtime_error(file + ": cannot be read");
    std::vector<Entry> entries;
    std::map<std::string, std::vector<std::string>> argumentsOf;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line[0] == '#') continue;
        try {
            const auto& entry = entries.emplace_back(parseEntry(line));
            if (!argumentsOf.emplace(entry.key, entry.arguments).second)
                throw std::runtime_error("the key appears twice");
            const auto of = argumentsOf.find(entry.key.substr(0, entry.key.find('#')));
            if (of == argumentsOf.end() || of->second != entry.arguments)
                throw std::runtime_error("a form of no text with these arguments above it");
        } catch (const std::exception& error) {
            throw std::runtime_error(file + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    return entries;
}

/// Quotes for C++ and for JSON; the texts hold no control characters but line breaks.
std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (char c : text) {
        if (c == '\n')
            result += "\\n";
        else if (c == '"' || c == '\\')
            (result += '\\') += c;
        else
            result += c;
    }
    return result + '"';
}

std::string parameters(const Entry& entry, bool takesEnvironment) {
    std::string list = takesEnvironment ? "const platform::Environment& environment" : "";
    for (std::size_t i = 0; i < entry.arguments.size(); ++i) {
        if (entry.arguments[i] != "value" && entry.arguments[i] != "integer")
            throw std::runtime_error("unknown argument kind of \"" + entry.key + "\": " + entry.arguments[i]);
        list += list.empty() ? "" : ", ";
        list +=
            (entry.arguments[i] == "value" ? "ValueArgument p" : "IntegerArgument p") + std::to_string(i + 1);
    }
    return list;
}

void write(std::ostream& header, std::ostream& source, const Scope& scope) {
    for (const auto& [name, entry] : scope.accessors) {
        header << "/// " << quoted(entry->text) << "\n";
        for (const bool takesEnvironment : {false, true}) {
            const std::string list = parameters(*entry, takesEnvironment);
            header << "std::string " << name << "(" << list << ");\n";
            source << "std::string " << name << "(" << list << ") {\n    return accessorText("
                   << (takesEnvironment ? "environment, " : "") << quoted(entry->key) << ", "
                   << quoted(entry->text) << ", {";
            for (std::size_t i = 1; i <= entry->arguments.size(); ++i)
                source << (i > 1 ? ", " : "") << "p" << i;
            source << "});\n}\n";
        }
    }
    for (const auto& [name, inner] : scope.scopes) {
        header << "\nnamespace " << name << " {\n";
        source << "\nnamespace " << name << " {\n";
        write(header, source, inner);
        header << "}  // namespace " << name << "\n";
        source << "}  // namespace " << name << "\n";
    }
}

Scope tree(const std::vector<Entry>& entries) {
    Scope root;
    for (const auto& entry : entries) {
        if (isPluralForm(entry)) continue;
        auto components = split(entry.key, ".");
        Scope* scope = &root;
        for (std::size_t i = 0; i + 1 < components.size(); ++i)
            scope = &scope->scopes[scopeName(components[i])];
        const auto name = accessorName(components.back());
        if (!scope->accessors.emplace(name, &entry).second)
            throw std::runtime_error("two keys give the accessor " + name + ": " + entry.key);
    }
    return root;
}

void writeTable(std::ostream& table, const std::vector<Entry>& entries) {
    table << "{\n";
    for (std::size_t i = 0; i < entries.size(); ++i)
        table << "  " << quoted(entries[i].key) << ": " << quoted(entries[i].text)
              << (i + 1 < entries.size() ? ",\n" : "\n");
    table << "}\n";
}

void writeAll(const std::vector<std::string>& arguments) {
    if (arguments.size() != 4)
        throw std::runtime_error("usage: l10n-generator CATALOGUE HEADER SOURCE TABLE");
    const auto entries = readCatalogue(arguments[0]);
    std::ofstream header(arguments[1]);
    std::ofstream source(arguments[2]);
    std::ofstream table(arguments[3]);
    header << "// Generated from the catalogue of texts; edit that.\n#pragma once\n\n"
              "#include <System/Environment.h>\n#include <HbrLocalization/FormatArgument.h>\n\n"
              "#include <string>\n\n"
              "/// Two accessors per text: in the language of an environment, and in that of\n"
              "/// Environment::current(). Numbers are in the user's digits. Any thread.\n"
              "namespace hbr::L10n {\n\n";
    source << "// Generated from the catalogue of texts; edit that.\n#include <HbrLocalization/L10n.h>\n\n"
              "#include \"AccessorText.h\"\n\nnamespace hbr::L10n {\n\n";
    write(header, source, tree(entries));
    header << "\n}  // namespace hbr::L10n\n";
    source << "\n}  // namespace hbr::L10n\n";
    writeTable(table, entries);
    header.close();
    source.close();
    table.close();
    if (!header || !source || !table) throw std::runtime_error("an output could not be written");
}

}  // namespace

int main(int count, char** arguments) {
    try {
        writeAll({arguments + 1, arguments + count});
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}

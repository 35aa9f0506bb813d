#include <DesktopHost/PlacementsFile.h>

#include <System/Files.h>
#include <Values/Toml.h>
#include <Values/TomlEdit.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ranges>
#include <utility>

namespace hbr {

namespace {

using platform::Diagnostic;
using platform::PropertyDictionary;
using platform::PropertyValue;

constexpr std::string_view tableName = "widget";
constexpr std::array keys = {"name", "family", "corner", "output", "order", "x", "y"};

struct Document {
    PlacementsFile::Contents contents;
    PropertyDictionary root;
    std::string text;
    std::size_t tableCount = 0;
};

/// Reads the tables; what is wrong with one goes to the diagnostics.
class Reader {
  public:
    Reader(const std::filesystem::path& file, platform::DiagnosticsSink* diagnostics)
        : file_(file), diagnostics_(diagnostics) {}

    PlacementsFile::Contents contentsOf(const PropertyDictionary& root) {
        PlacementsFile::Contents contents;
        if (const auto* value = root.find("notifications")) {
            if (const auto shows = value->asBool()) {
                contents.showsNotifications = *shows;
            } else {
                report("notifications", "must be true or false");
            }
        }
        if (const auto urgent = text(root, "urgent")) {
            if (*urgent == "always") {
                contents.urgent = UrgentAlerts::always;
            } else if (*urgent == "never") {
                contents.urgent = UrgentAlerts::never;
            } else if (*urgent != "soon") {
                report("urgent", "must be soon, always or never");
            }
        }
        if (const auto* value = root.find("scale")) {
            const auto scale = value->asDouble();
            if (scale && *scale >= 0.5 && *scale <= 4) {
                contents.scale = *scale;
            } else {
                report("scale", "must be a number from 0.5 to 4");
            }
        }
        const auto* tables = root.find(tableName);
        if (!tables) return contents;
        if (!tables->asArray()) {
            report(std::string(tableName), "must be an array of tables, [[widget]]");
            return contents;
        }
        for (std::size_t i = 0; i < tables->asArray()->size(); ++i) {
            prefix_ = "widget " + std::to_string(i + 1);
            const auto* table = (*tables->asArray())[i].asDictionary();
            if (!table) {
                report("", "must be a table");
            } else if (auto widget = widgetOf(*table)) {
                widget->table = i;
                contents.widgets.push_back(*std::move(widget));
            }
        }
        return contents;
    }

  private:
    std::optional<PlacedWidget> widgetOf(const PropertyDictionary& table) {
        PlacedWidget widget;
        widget.name = text(table, "name").value_or("");
        if (widget.name.empty()) {
            report("name", "is missing; the widget is left out");
            return std::nullopt;
        }
        if (const auto family = text(table, "family")) {
            const auto known = platform::widgetFamily(*family);
            if (!known) {
                report("family", "must be small, medium or large; the widget is left out");
                return std::nullopt;
            }
            widget.family = *known;
        }
        if (const auto corner = text(table, "corner")) {
            if (const auto known = platform::cornerNamed(*corner)) {
                widget.placement.corner = *known;
            } else {
                report("corner", "must be top-start, top-end, bottom-start or bottom-end");
            }
        }
        widget.placement.output = text(table, "output").value_or("");
        if (const auto order = number(table, "order"))
            widget.placement.order = static_cast<int>(std::clamp(*order, -1e6, 1e6));
        const auto x = number(table, "x");
        const auto y = number(table, "y");
        if (x && y) widget.placement.position = platform::Point{*x, *y};
        return widget;
    }

    std::optional<std::string> text(const PropertyDictionary& table, const char* key) {
        const auto* value = table.find(key);
        if (!value) return std::nullopt;
        if (const auto* found = value->asString()) return *found;
        report(key, "must be a text");
        return std::nullopt;
    }
    std::optional<double> number(const PropertyDictionary& table, const char* key) {
        const auto* value = table.find(key);
        if (!value) return std::nullopt;
        const auto found = value->asDouble();
        if (found && std::isfinite(*found)) return found;
        report(key, "must be a number");
        return std::nullopt;
    }

    void report(const std::string& field, std::string what) {
        if (!diagnostics_) return;
        const std::string separator = prefix_.empty() || field.empty() ? "" : ", ";
        diagnostics_->report({.file = file_, .field = prefix_ + separator + field, .text = std::move(what)});
    }

    const std::filesystem::path& file_;
    platform::DiagnosticsSink* diagnostics_;
    std::string prefix_;
};

Document read(const std::filesystem::path& file, platform::DiagnosticsSink& diagnostics) {
    Document document;
    std::error_code error;
    auto text = platform::readRegularFile(file, error);
    if (!text) {
        if (error == std::errc::no_such_file_or_directory) return document;
        diagnostics.report({.severity = Diagnostic::Severity::error,
                            .file = file,
                            .text = "cannot be read: " + error.message()});
        document.contents.isBroken = true;
        return document;
    }
    platform::TomlError problem;
    auto root = platform::parseToml(*text, problem);
    if (!root) {
        diagnostics.report({.severity = Diagnostic::Severity::error,
                            .file = file,
                            .line = problem.line,
                            .text = problem.text});
        document.contents.isBroken = true;
        return document;
    }
    document.contents = Reader(file, &diagnostics).contentsOf(*root);
    const auto* tables = root->find(tableName);
    if (tables && tables->asArray()) document.tableCount = tables->asArray()->size();
    document.root = *std::move(root);
    document.text = *std::move(text);
    return document;
}

std::optional<PropertyValue> valueOf(const PlacedWidget& widget, std::string_view key) {
    const auto& placement = widget.placement;
    const auto whole = [](double value) {
        return PropertyValue(static_cast<std::int64_t>(std::lround(value)));
    };
    if (key == "name") return PropertyValue(widget.name);
    if (key == "family") return PropertyValue(nameOf(widget.family));
    if (key == "corner") return PropertyValue(nameOf(placement.corner));
    if (key == "output") {
        return placement.output.empty() ? std::nullopt : std::optional<PropertyValue>(placement.output);
    }
    if (key == "order") return PropertyValue(placement.order);
    if (!placement.position) return std::nullopt;
    return whole(key == "x" ? placement.position->x : placement.position->y);
}

/// The table as it is with this widget in it.
PropertyDictionary tableOf(const PlacedWidget& widget, PropertyDictionary table) {
    for (const char* key : keys) {
        table.remove(key);
        if (auto value = valueOf(widget, key)) table.set(key, *std::move(value));
    }
    return table;
}

bool saysTheSame(const PlacedWidget& a, const PlacedWidget& b) {
    return std::ranges::all_of(keys, [&](const char* key) { return valueOf(a, key) == valueOf(b, key); });
}

const PlacedWidget* from(const std::vector<PlacedWidget>& widgets, std::size_t table) {
    const auto found =
        std::ranges::find_if(widgets, [table](const PlacedWidget& widget) { return widget.table == table; });
    return found == widgets.end() ? nullptr : &*found;
}

/// The tables of the document with these widgets; entries that are none and unknown keys are kept.
std::string rewritten(const Document& document, const std::vector<PlacedWidget>& widgets) {
    platform::PropertyArray tables;
    const auto* old = document.root.find(tableName);
    for (std::size_t i = 0; i < document.tableCount; ++i) {
        const PropertyValue& entry = (*old->asArray())[i];
        if (const auto* widget = from(widgets, i)) {
            tables.emplace_back(tableOf(*widget, *entry.asDictionary()));
        } else if (!from(document.contents.widgets, i)) {
            tables.push_back(entry);
        }
    }
    for (const PlacedWidget& widget : widgets) {
        if (!widget.table) tables.emplace_back(tableOf(widget, {}));
    }
    PropertyDictionary root = document.root;
    root.set(tableName, std::move(tables));
    return platform::writeToml(root);
}

/// The document's own text, changed where the widgets changed; nothing where its layout is beyond that.
std::optional<std::string> edited(const Document& document, const std::vector<PlacedWidget>& widgets) {
    std::optional<std::string> text = document.text;
    // Backwards, so that the numbers of the tables stay right.
    for (const PlacedWidget& before : std::views::reverse(document.contents.widgets)) {
        const auto* widget = from(widgets, *before.table);
        if (!widget) {
            if (text) text = platform::withoutTomlTable(*text, tableName, *before.table);
            continue;
        }
        for (const char* key : keys) {
            const auto value = valueOf(*widget, key);
            if (!text || valueOf(before, key) == value) continue;
            text = platform::withTomlValue(*text, tableName, *before.table, key, value ? &*value : nullptr);
        }
    }
    for (const PlacedWidget& widget : widgets) {
        if (text && !widget.table) text = platform::withMoreToml(*text, tableName, tableOf(widget, {}));
    }

    platform::TomlError problem;
    const auto root = text ? platform::parseToml(*text, problem) : std::nullopt;
    if (!root) return std::nullopt;
    auto meant = widgets;
    std::ranges::stable_sort(meant, {}, [](const PlacedWidget& one) { return one.table.value_or(SIZE_MAX); });
    const auto result = Reader({}, nullptr).contentsOf(*root).widgets;
    if (!std::ranges::equal(result, meant, saysTheSame)) return std::nullopt;
    return text;
}

void reportFailure(platform::DiagnosticsSink& diagnostics, const std::filesystem::path& file,
                   const std::error_code& error) {
    diagnostics.report({.severity = Diagnostic::Severity::error,
                        .file = file,
                        .field = std::string(tableName),
                        .text = "cannot be written: " + error.message()});
}

std::filesystem::path placementsPath(const platform::Environment& environment) {
    return environment.configDirectory / "desktop.toml";
}

/// Under the file's lock.
bool store(const platform::Environment& environment, const PlacementsFile::Change& change) {
    const auto path = placementsPath(environment);
    auto& diagnostics = *environment.diagnostics;
    std::error_code error;
    Document document = read(path, diagnostics);
    if (document.contents.isBroken) {
        const auto moved = platform::setAside(path, error);
        if (!moved) {
            reportFailure(diagnostics, path, error);
            return false;
        }
        diagnostics.report({.file = path, .text = "set aside as " + moved->string()});
        document = {};
    }
    auto widgets = document.contents.widgets;
    change(widgets);
    if (widgets == document.contents.widgets) return true;
    const auto text = edited(document, widgets);
    if (platform::writeFileAtomically(path, text ? *text : rewritten(document, widgets), 0600, error))
        return true;
    reportFailure(diagnostics, path, error);
    return false;
}

}  // namespace

PlacementsFile::PlacementsFile(platform::EnvironmentRef environment)
    : environment_(environment),
      changes_(std::make_shared<Changes>(
          Changes::File{.path = placementsPath(*environment),
                        .read =
                            [environment] {
                                auto document = read(placementsPath(*environment), *environment->diagnostics);
                                return std::make_shared<const std::vector<PlacedWidget>>(
                                    std::move(document.contents.widgets));
                            },
                        .store = [environment](const auto&, const auto&,
                                               const Change& change) { return store(*environment, change); },
                        .reportLock =
                            [environment](const auto&, const std::error_code& error) {
                                reportFailure(*environment->diagnostics, placementsPath(*environment), error);
                            }})) {}

std::filesystem::path PlacementsFile::path() const {
    return placementsPath(*environment_);
}

PlacementsFile::Contents PlacementsFile::load() const {
    Contents contents;
    const auto widgets = changes_->read([&] {
        contents = read(path(), *environment_->diagnostics).contents;
        return std::make_shared<const std::vector<PlacedWidget>>(contents.widgets);
    });
    contents.widgets = *widgets;
    return contents;
}

bool PlacementsFile::update(const Change& change) const {
    return changes_->update(std::string(tableName), change);
}

PlacedWidget placedWidget(std::string name, platform::WidgetFamily family, platform::Corner corner,
                          std::string output, const std::vector<PlacedWidget>& others) {
    PlacedWidget widget;
    widget.name = std::move(name);
    widget.family = family;
    widget.placement.corner = corner;
    widget.placement.output = std::move(output);
    for (const PlacedWidget& other : others) {
        if (other.placement.corner == corner && other.placement.output == widget.placement.output)
            widget.placement.order = std::max(widget.placement.order, other.placement.order + 1);
    }
    return widget;
}

}  // namespace hbr

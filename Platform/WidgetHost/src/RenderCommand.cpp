#include "RenderCommand.h"

#include <System/Files.h>
#include <Values/JsonText.h>
#include <Views/LaidOutTree.h>
#include <Views/Painters.h>
#include <Views/PictureLibrary.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <ostream>
#include <system_error>

#include "CommandFailure.h"

namespace platform {

namespace {

constexpr std::array<std::string_view, 5> formats = {"png", "svg", "pdf", "json", "text"};

bool isPicture(std::string_view format) {
    return format == "png" || format == "svg" || format == "pdf";
}

std::string formatOf(const RenderOptions& options) {
    if (!options.format.empty()) return options.format;
    std::string ending = options.output.extension().string();
    if (!ending.empty()) ending.erase(0, 1);
    if (ending == "txt") return "text";
    return std::ranges::find(formats, ending) != formats.end() ? ending : "png";
}

WidgetFamily familyOf(const StaticConfiguration& widget, const std::string& name,
                      const std::string& widgetName) {
    const auto family = widgetFamily(name);
    if (family && widget.supports(*family)) return *family;
    std::string offered;
    for (WidgetFamily each : widget.families())
        offered += (offered.empty() ? "" : ", ") + std::string(nameOf(each));
    throw CommandFailure(exitStatus::failed, "the widget " + widgetName + " has no family \"" + name +
                                                 "\" (there are: " + offered + ")");
}

WidgetEntry entryOf(WidgetTimeline timeline, const StaticConfiguration& widget, WidgetFamily family,
                    int index) {
    // Nothing comes up: what is drawn is the entry without an event.
    if (timeline.entries.empty()) timeline.entries.push_back(widget.placeholder({.family = family}));
    const auto count = static_cast<int>(timeline.entries.size());
    if (index < 0 || index >= count) {
        throw CommandFailure(exitStatus::failed,
                             "no entry " + std::to_string(index) + " (there " +
                                 (count == 1 ? "is: 0)" : "are: 0 to " + std::to_string(count - 1) + ")"));
    }
    return timeline.entries[static_cast<std::size_t>(index)];
}

std::string painted(const LaidOutTree& tree, std::string_view format, double scale) {
    if (format == "png") return paintPng(tree, scale);
    if (format == "svg") return paintSvg(tree);
    if (format == "pdf") return paintPdf(tree);
    if (format == "json") return writeJson(treeJson(tree), 2) + "\n";
    std::string text = treeText(tree);
    if (!text.ends_with('\n')) text += '\n';
    return text;
}

void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        // A pipe or a device is written to, not replaced.
        std::ofstream stream(file, std::ios::binary);
        if (stream << content << std::flush) return;
        error = std::make_error_code(std::errc::io_error);
    } else if (writeFileAtomically(file, content, 0644, error)) {
        return;
    }
    throw CommandFailure(exitStatus::failed, file.string() + ": cannot be written: " + error.message());
}

}  // namespace

void render(const WidgetSession& session, const StaticConfiguration& widget, const RenderOptions& options,
            std::ostream& out) {
    const std::string format = formatOf(options);
    const bool toStandardOutput = options.output.empty() || options.output == "-";
    if (toStandardOutput && isPicture(format) && ::isatty(STDOUT_FILENO) == 1) {
        throw CommandFailure(exitStatus::wrongUsage,
                             "a picture is not written to a terminal; name a file with -o FILE");
    }
    const WidgetFamily family = familyOf(widget, options.family, session.bundle().shortName(widget.kind()));
    const WidgetEntry entry = entryOf(session.timeline(widget, family), widget, family, options.entry);

    ViewContext context;
    context.family = family;
    context.now = std::max(session.environment()->now(), entry.date, [](Date a, Date b) { return a < b; });
    context.locale = session.environment()->locale;
    context.isRightToLeft = isRightToLeftLanguage(session.bundle().language());
    context.appearance = options.appearance == "dark" ? Appearance::dark : Appearance::light;
    context.contrast = options.contrast == "high" ? Contrast::high : Contrast::normal;
    context.scale = options.scale;
    context.pictures = std::make_shared<const PictureLibrary>(session.environment());

    const std::string content = painted(layOutWidget(entry.view(context), context), format, options.scale);
    if (toStandardOutput) {
        out << content << std::flush;
        if (!out) throw CommandFailure(exitStatus::failed, "standard output cannot be written");
    } else {
        writeFile(options.output, content);
    }
}

}  // namespace platform

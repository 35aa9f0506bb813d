#pragma once

#include <HbrUtils/Formatters.h>
#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>
#include <Views/LaidOutTree.h>
#include <support/PseudoLanguage.h>
#include <support/TestEnvironment.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// Draws views at ten in the morning of a Wednesday in Berlin, with a lead of five minutes.
class Drawing {
  public:
    /// British formats and texts, or those of `locale`; in pseudo-language when that is asked for.
    explicit Drawing(const char* locale = "en_GB", bool isPseudo = false, const char* zone = "Europe/Berlin")
        : world("2026-03-04T09:00:00Z", zone, locale), formatters((prepare(isPseudo), world)) {
        platform::Environment::setCurrent(world);
    }

    TestEnvironment world;
    platform::Date now = world->now();
    hbr::EventViewSettings settings{.timeOffset = 300, .includeTravelTime = true};
    platform::Appearance appearance = platform::Appearance::light;

    hbr::EventViewInputs inputs() const { return {settings, formatters, strings}; }

    platform::ViewContext context(platform::WidgetFamily family) const {
        platform::ViewContext context;
        context.family = family;
        context.now = now;
        context.locale = world->locale;
        context.isRightToLeft = platform::isRightToLeftLanguage(strings.language());
        context.appearance = appearance;
        context.pictures = pictures;
        return context;
    }

    /// `view` as the content of a widget of that family.
    template <class DrawnView>
    platform::LaidOutTree draw(const DrawnView& view, platform::WidgetFamily family) const {
        const auto drawing = context(family);
        return platform::layOutWidget(view.body(drawing), drawing);
    }

    /// Starts and ends so many minutes from now.
    hbr::Event event(std::string id, double startMinute, double endMinute) const {
        hbr::Event event;
        event.title = "Event " + id;
        event.id = std::move(id);
        event.startDate = now.addingTimeInterval(startMinute * 60);
        event.endDate = now.addingTimeInterval(endMinute * 60);
        event.color = platform::Color::hex(0x3584E4);
        return event;
    }

  private:
    void prepare(bool isPseudo) {
        if (!isPseudo) return;
        writePseudoLanguage(world.home / "pseudo");
        world.change().resourceDirectories.insert(world.change().resourceDirectories.begin(),
                                                  world.home / "pseudo");
        world.change().locale.languages = {pseudoLanguage};
    }

    hbr::Formatters formatters;
    hbr::WidgetStrings strings{world.ref()};
    std::shared_ptr<const platform::PictureLibrary> pictures =
        std::make_shared<platform::PictureLibrary>(world);
};

inline hbr::VideoConferenceLink callLink() {
    return {.service = {}, .url = platform::Url::parse("https://meet.example.com/room").value()};
}

/// Every node of that kind in the order of drawing.
inline std::vector<const platform::LaidOutNode*> nodesOf(const platform::LaidOutNode& node,
                                                         platform::LaidOutNode::Kind kind) {
    std::vector<const platform::LaidOutNode*> found;
    if (node.kind == kind) found.push_back(&node);
    for (const auto& child : node.children) {
        const auto inner = nodesOf(child, kind);
        found.insert(found.end(), inner.begin(), inner.end());
    }
    return found;
}

/// Addresses of the tap targets, outer before inner.
inline std::vector<std::string> targetsOf(const platform::LaidOutTree& tree) {
    std::vector<std::string> targets;
    for (const auto& link : tree.links())
        targets.push_back(link.url.absoluteString());
    return targets;
}

}  // namespace test

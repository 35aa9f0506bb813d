#include "WidgetGallery.h"

#include "EntryContent.h"
#include "PlacementChanges.h"
#include "WidgetBoard.h"

#include <utility>

namespace hbr {

namespace {

std::string galleryText(const platform::WidgetBundle& bundle, const char* key) {
    return bundle.localizedText(std::string("Widget.desktop.gallery.") + key);
}

}  // namespace

WidgetGallery::WidgetGallery(platform::DesktopSession& session, const platform::WidgetDesk& desk,
                             const platform::WidgetBundle& bundle,
                             const platform::WidgetBundle& demonstration, const WidgetCatalogue& catalogue,
                             bool isDemonstration, Actions actions)
    : bundle_(bundle),
      catalogue_(catalogue),
      actions_(std::move(actions)),
      staysOnDesktop_(session.capabilities().staysOnDesktop),
      isDemonstration_(isDemonstration) {
    for (const platform::StaticConfiguration& configuration : demonstration.body()) {
        configuration.getSnapshot({.isPreview = true}, [&](const platform::WidgetEntry& entry) {
            demonstrations_.emplace(configuration.kind(), entryContent(entry));
        });
    }
    std::vector<platform::GalleryItem> items;
    for (const platform::StaticConfiguration& configuration : bundle.body()) {
        const std::string& kind = kinds_.emplace_back(configuration.kind());
        items.push_back({.identity = widgetIdentity(bundle, configuration),
                         .description = bundle.localizedText(configuration.descriptionKey()),
                         .preview = [this, kind](const platform::ViewContext& context) {
                             return preview(kind, context);
                         }});
    }
    window_ = platform::GalleryWindow::show(session, desk,
                                            {.title = galleryText(bundle, "title"),
                                             .introduction = introduction(),
                                             .add = galleryText(bundle, "add"),
                                             .remove = galleryText(bundle, "remove"),
                                             .placed = galleryText(bundle, "placed")},
                                            std::move(items), windowActions());
}

platform::GalleryWindow::Actions WidgetGallery::windowActions() const {
    const auto changing = [this](auto makeChange) {
        return [this, makeChange](const std::string& kind, platform::WidgetFamily family) {
            if (const auto* widget = catalogue_.find(kind))
                actions_.change(makeChange(WidgetCatalogue::Choice{widget->name, family}));
        };
    };
    return {.add = changing([](auto widget) { return addingWidget(std::move(widget)); }),
            .remove = changing(removingLastWidget),
            .closed = actions_.closed};
}

std::string WidgetGallery::introduction() const {
    std::string text = galleryText(bundle_, "introduction");
    if (isDemonstration_) text += " " + galleryText(bundle_, "demonstration");
    if (!staysOnDesktop_) text += "\n" + galleryText(bundle_, "ordinaryWindows");
    return text;
}

platform::View WidgetGallery::preview(const std::string& kind, const platform::ViewContext& context) const {
    const auto& contents = isDemonstration_ ? demonstrations_ : contents_;
    const auto content = contents.find(kind);
    return content == contents.end() ? platform::View() : content->second(context);
}

void WidgetGallery::setEntry(const std::string& kind, const platform::WidgetEntry& entry) {
    contents_.insert_or_assign(kind, entryContent(entry));
    if (!isDemonstration_) window_->invalidate();
}

void WidgetGallery::setPlaced(const std::vector<PlacedWidget>& placed) {
    std::vector<platform::GalleryChoice> choices;
    for (const PlacedWidget& one : placed) {
        if (const auto* widget = catalogue_.find(one.name))
            choices.push_back({widget->configuration.kind(), one.family});
    }
    window_->setPlaced(std::move(choices));
}

void WidgetGallery::setDemonstration(bool isDemonstration) {
    if (isDemonstration == isDemonstration_) return;
    isDemonstration_ = isDemonstration;
    window_->setIntroduction(introduction());
    window_->invalidate();
}

}  // namespace hbr

#pragma once

#include <WidgetHost/TimelineProvider.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A widget without options of its own: its kind, the provider of its entries and the view of an entry.
/// Cheap to copy.
class StaticConfiguration {
  public:
    /// `content` gives the view of an entry: View(const Entry&, const ViewContext&).
    template <class Provider, class Content>
    StaticConfiguration(std::string kind, std::shared_ptr<Provider> provider, Content content)
        : kind_(std::move(kind)) {
        using Entry = typename Provider::Entry;
        auto bind = [content = std::move(content)](Entry entry) {
            auto shared = std::make_shared<const Entry>(std::move(entry));
            const auto view = [shared, content](const ViewContext& context) {
                if (!(context.now > shared->date)) return content(*shared, context);
                // What an entry shows is drawn as of its date: later, it is the entry of a later moment.
                Entry later = *shared;
                later.date = context.now;
                return content(later, context);
            };
            return WidgetEntry{
                shared->date, view, [shared] { return entryJson(*shared); },
                [shared](const Environment& environment) { return entryText(*shared, environment); }};
        };
        placeholder_ = [provider, bind](const TimelineProviderContext& context) {
            return bind(provider->placeholder(context));
        };
        snapshot_ = [provider, bind](const TimelineProviderContext& context, SnapshotCompletion completion) {
            provider->getSnapshot(context, [bind, completion = std::move(completion)](Entry entry) {
                completion(bind(std::move(entry)));
            });
        };
        timeline_ = [provider, bind](const TimelineProviderContext& context, TimelineCompletion completion) {
            provider->getTimeline(context, [bind, completion = std::move(completion)](Timeline<Entry> typed) {
                WidgetTimeline timeline{{}, typed.policy};
                timeline.entries.reserve(typed.entries.size());
                for (Entry& entry : typed.entries)
                    timeline.entries.push_back(bind(std::move(entry)));
                completion(std::move(timeline));
            });
        };
    }

    StaticConfiguration configurationDisplayName(std::string key) const;
    StaticConfiguration description(std::string key) const;
    StaticConfiguration supportedFamilies(std::vector<WidgetFamily> families) const;

    const std::string& kind() const { return kind_; }
    /// Keys of the bundle's string table.
    const std::string& displayNameKey() const { return displayNameKey_; }
    const std::string& descriptionKey() const { return descriptionKey_; }
    const std::vector<WidgetFamily>& families() const { return families_; }
    bool supports(WidgetFamily family) const;

    using SnapshotCompletion = std::function<void(WidgetEntry)>;
    using TimelineCompletion = std::function<void(WidgetTimeline)>;
    /// Also shown for a timeline without entries.
    WidgetEntry placeholder(const TimelineProviderContext& context) const { return placeholder_(context); }
    void getSnapshot(const TimelineProviderContext& context, SnapshotCompletion completion) const {
        snapshot_(context, std::move(completion));
    }
    void getTimeline(const TimelineProviderContext& context, TimelineCompletion completion) const {
        timeline_(context, std::move(completion));
    }

  private:
    std::string kind_;
    std::string displayNameKey_;
    std::string descriptionKey_;
    std::vector<WidgetFamily> families_;
    std::function<WidgetEntry(const TimelineProviderContext&)> placeholder_;
    std::function<void(const TimelineProviderContext&, SnapshotCompletion)> snapshot_;
    std::function<void(const TimelineProviderContext&, TimelineCompletion)> timeline_;
};

}  // namespace platform

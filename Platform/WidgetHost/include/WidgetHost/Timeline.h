#pragma once

#include <System/Environment.h>
#include <TimeAndText/Date.h>
#include <Values/JsonValue.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

#include <functional>
#include <string>
#include <vector>

namespace platform {

/// When the host asks for the next timeline.
struct TimelineReloadPolicy {
    Date date;

    static TimelineReloadPolicy after(Date moment) { return {moment}; }

    friend bool operator==(const TimelineReloadPolicy&, const TimelineReloadPolicy&) = default;
};

/// Entries by ascending date; each is shown until the next one's date. An Entry is a plain value with a
/// `Date date` and the free functions `JsonValue entryJson(const Entry&)` and
/// `std::string entryText(const Entry&, const Environment&)`, lines for people at a terminal.
template <class Entry>
struct Timeline {
    std::vector<Entry> entries;
    TimelineReloadPolicy policy;
};

/// An entry of any widget, bound to the view that draws it. Immutable, cheap to copy.
struct WidgetEntry {
    Date date;
    /// What the widget shows at the context's clock; the host draws the container behind it.
    std::function<View(const ViewContext& context)> view;
    /// {"date", …}.
    std::function<JsonValue()> json;
    std::function<std::string(const Environment& environment)> text;
};

using WidgetTimeline = Timeline<WidgetEntry>;

}  // namespace platform

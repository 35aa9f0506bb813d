#include <HbrCore/CoreFixture.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using namespace hbr;
using test::at;

/// What is not optimized gets eight days around the change of the clocks.
#ifdef NDEBUG
constexpr int days = 30;
const double first = at("2026-03-15T00:00:17Z").timeIntervalSinceReferenceDate();
#else
constexpr int days = 8;
const double first = at("2026-03-25T12:00:17Z").timeIntervalSinceReferenceDate();
#endif
const double summerTime = at("2026-03-29T01:00:00Z").timeIntervalSinceReferenceDate();

double day(double moment) {
    return std::floor((moment + (moment < summerTime ? 3600 : 7200)) / 86400);
}
/// Of a day and seconds by the clock on the wall, outside the hour of the change.
double berlin(double ofDay, double seconds) {
    const double winter = ofDay * 86400 + seconds - 3600;
    return winter < summerTime ? winter : winter - 3600;
}
std::string written(double moment) {
    std::string text = platform::formatRfc3339(platform::Date(moment)).substr(0, 19);
    std::erase_if(text, [](char c) { return c == '-' || c == ':'; });
    return text + "Z";
}

/// One occurrence of something, and what of the settings concerns it.
struct Item {
    enum Kind { event, own, task } kind;
    std::string title;
    double start;
    double end;
    double travel = 0;
    std::optional<double> ownLead;
    bool isHidden = false;
};
struct Settings {
    int days;
    double lead;
    bool travel;
};
using Shown = std::vector<std::pair<std::string, double>>;

struct Reckoning {
    Shown upcoming;
    Shown current;

    Reckoning(const std::vector<Item>& items, const Settings& settings, double now) {
        const double windowEnd = berlin(day(now) + settings.days, 86399);
        const std::array<Item::Kind, 3> kinds = {Item::event, Item::own, Item::task};
        std::vector<const Item*> pending, scheduled, pendingTasks, underWay;
        for (const Item::Kind kind : kinds) {
            for (const Item& item : items) {
                if (item.kind != kind) continue;
                const double lead = item.ownLead.value_or(settings.lead);
                const bool isAhead = item.start - lead < now && now <= item.start && item.start <= now + 3600;
                if (kind == Item::event && item.start <= now && now <= item.end) underWay.push_back(&item);
                if (kind == Item::event && isAhead) pending.push_back(&item);
                if (kind == Item::task && isAhead) pendingTasks.push_back(&item);
                const double alert = item.start - lead - (settings.travel ? item.travel : 0);
                if (item.start > windowEnd || item.end < now || item.isHidden) continue;
                if (kind == Item::own ? alert > now : alert >= now) scheduled.push_back(&item);
            }
        }
        upcoming = byStart({pending, scheduled, pendingTasks});
        current = byStart({underWay});
    }

    static Shown byStart(const std::vector<std::vector<const Item*>>& lists) {
        Shown shown;
        for (const auto& list : lists) {
            for (const Item* item : list)
                shown.emplace_back(item->title, item->start);
        }
        std::ranges::stable_sort(shown, {}, &Shown::value_type::second);
        return shown;
    }
};

Shown shown(const std::vector<Event>& events) {
    Shown list;
    for (const Event& event : events)
        list.emplace_back(*event.title, event.startDate.timeIntervalSinceReferenceDate());
    return list;
}

/// A calendar of recurring and single events, tasks and own reminders, and by itself the same as items.
class World {
  public:
    World() : core(platform::formatRfc3339(platform::Date(first))) {
        std::string text;
        const auto berlinDaily = [&](const char* title, const char* clock, const char* lines) {
            text += "BEGIN:VEVENT\nUID:" + std::string(title) + "\nSUMMARY:" + title +
                    "\nDTSTART;TZID=Europe/Berlin:20260101T" + clock + "\n" + lines + "END:VEVENT\n";
        };
        berlinDaily("Daily", "093000",
                    "RRULE:FREQ=DAILY\nDURATION:PT30M\nX-APPLE-TRAVEL-DURATION;VALUE=DURATION:PT15M\n");
        berlinDaily("Night", "235000", "RRULE:FREQ=WEEKLY;BYDAY=MO,TH\nDURATION:PT45M\n");
        berlinDaily("Hidden", "130000", "RRULE:FREQ=DAILY\nDURATION:PT2H\n");
        berlinDaily("Declined", "110000",
                    "RRULE:FREQ=DAILY\nDURATION:PT1H\nATTENDEE;PARTSTAT=DECLINED:mailto:me@example.org\n");
        berlinDaily("Cancelled", "120000", "RRULE:FREQ=DAILY\nDURATION:PT1H\nSTATUS:CANCELLED\n");
        text +=
            "BEGIN:VEVENT\nUID:Utc\nSUMMARY:Utc\nDTSTART:20260101T162000Z\nRRULE:FREQ=DAILY\n"
            "DURATION:PT20M\nEND:VEVENT\n"
            "BEGIN:VEVENT\nUID:Whole\nSUMMARY:Whole\nDTSTART;VALUE=DATE:20260101\nRRULE:FREQ=DAILY\n"
            "END:VEVENT\n";
        for (double d = day(first) - 2; d < day(first) + days + 20; ++d) {
            add(Item::event, "Daily", berlin(d, 34200), 1800).travel = 900;
            // The epoch of the clock was a Monday.
            if (const int weekday = static_cast<int>(d) % 7; weekday == 0 || weekday == 3)
                add(Item::event, "Night", berlin(d, 85800), 2700);
            add(Item::event, "Hidden", berlin(d, 46800), 7200).isHidden = true;
            add(Item::event, "Utc", d * 86400 + 58800, 1200).ownLead = 600;
        }
        for (int i = 0; i < days * 2; ++i) {
            const auto number = std::to_string(i);
            const Item& single = add(Item::event, "Single " + number, first + i * 39011.0, 600.0 * (i % 18));
            text += "BEGIN:VEVENT\nUID:s" + number + "\nSUMMARY:" + single.title +
                    "\nDTSTART:" + written(single.start) + "\nDTEND:" + written(single.end) +
                    "\nEND:VEVENT\n";
            const Item& task = add(Item::task, "Task " + number, first + i * 40507.0, 0);
            text += "BEGIN:VTODO\nUID:t" + number + "\nSUMMARY:" + task.title +
                    "\nDUE:" + written(task.start) + "\nEND:VTODO\n";
            Item& own = add(Item::own, "Own " + number, first + i * 41513.0, 0);
            own.ownLead = 120 * (i % 3);
            core.services().reminders().addReminder({"o" + number, platform::Date(own.start), own.title,
                                                     std::nullopt, static_cast<std::int64_t>(*own.ownLead)});
        }
        core.services().reminders().addReminder(
            {"past", platform::Date(first - 29.5 * 86400), "Past", std::nullopt, 0});
        core.write("calendars/all.ics", text);
        auto rule = FilterRule::makeDefault();
        rule.value = "Hidden";
        core.services().settings().setExcludeRules({rule});
        const Event utc = [&] {
            for (const Event& event : core.reloaded().allCachedEvents()) {
                if (event.title == "Utc") return event;
            }
            return Event();
        }();
        core.services().eventSettings().storeCustomSettings(
            {.usesCustomTimeOffset = true, .timeOffsetSeconds = 600}, utc.id);
        newEdition(0);
        core.reloaded();
    }

    /// Another event in the place of the one before, two hours ahead.
    void newEdition(int number) {
        std::erase_if(items, [](const Item& item) { return item.title.starts_with("Edition"); });
        const double start = core.environment->now().timeIntervalSinceReferenceDate() + 7203;
        const Item& item = add(Item::event, "Edition " + std::to_string(number), start, 5400);
        core.write("calendars/edition.ics", "BEGIN:VEVENT\nUID:edition\nSUMMARY:" + item.title +
                                                "\nDTSTART:" + written(start) +
                                                "\nDURATION:PT90M\nEND:VEVENT\n");
        core.services().aggregatedEventStore().refreshData();
    }

    void choose(const Settings& settings) {
        auto& store = core.services().settings();
        store.setUpcomingEventsDaysFilter(settings.days);
        store.setTimeOffsetSeconds(static_cast<std::int64_t>(settings.lead));
        store.setIncludeTravelTime(settings.travel);
    }

    test::CoreFixture core;
    std::vector<Item> items;

  private:
    Item& add(Item::Kind kind, std::string title, double start, double length) {
        items.push_back({kind, std::move(title), start, start + length, 0, std::nullopt, false});
        return items.back();
    }
};

TEST(AMonthOfReloads, ShowsWhatAPlainReckoningShows) {
    World world;
    const std::array<Settings, 4> choices = {Settings{7, 60, true}, Settings{0, 300, false},
                                             Settings{2, 4000, false}, Settings{14, 60, false}};
    std::array<std::size_t, 2> most = {0, 0};
    for (int minute = 0; minute < days * 1440; ++minute) {
        if (minute % 1440 == 700) world.newEdition(minute / 1440 + 1);
        const Settings& settings = choices[static_cast<std::size_t>(minute / 997) % choices.size()];
        if (minute % 997 == 0) world.choose(settings);
        reloadAndWait(world.core.services());
        const double now = world.core.environment->now().timeIntervalSinceReferenceDate();
        const Reckoning expected(world.items, settings, now);
        const auto& manager = world.core.services().manager();
        ASSERT_EQ(shown(manager.allCachedUpcomingEvents()), expected.upcoming) << written(now);
        ASSERT_EQ(shown(manager.allCachedCurrentEvents()), expected.current) << written(now);
        most = {std::max(most[0], expected.upcoming.size()), std::max(most[1], expected.current.size())};
        world.core.environment.advance(60);
    }
    EXPECT_GT(most[0], 30u);
    EXPECT_GT(most[1], 1u);
    EXPECT_FALSE(world.core.services().reminders().reminder("past"));
}

}  // namespace
